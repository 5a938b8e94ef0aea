#pragma once

#include <filesystem>
#include <string>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"
#include "restore/IndexLines.h"

namespace korvenal::console {

/// Restores from discs of the program's own, and from such as another program wrote.
class RestoreFixture : public ConsoleFixture {
 protected:
  std::string restored(const std::string& path) const {
    return test::TempDir::read(target + "/" + path);
  }
  std::string backupScript() const {
    return "default ExcludeTopFolder 1\nnew Demo\nset comboDiscType 0\nadd '" + source +
           "'\nbackup\n";
  }
  /// A disc of a set that another program wrote, with what lies in the folder of its number.
  std::string makeDisc(int number, const std::string& identity = "") {
    const std::string name = std::to_string(number), image = temp / (name + ".iso");
    EXPECT_EQ(runProgram({"xorriso", "-outdev", "stdio:" + image, "-volid", "Backup #" + name,
                          "-volset_id", identity, "-map", temp / name, "/"},
                         temp / "printed"),
              0);
    return image;
  }
  std::string writeIndex(const test::IndexLines& lines) {
    return temp.write("_KORVEN{Demo(2026-11-22-10-00-F)}.bdx", lines.text());
  }
  std::vector<std::string> inTarget(const std::string& folder = "") const {
    return test::TempDir::names(target + "/" + folder);
  }
};

}  // namespace korvenal::console
