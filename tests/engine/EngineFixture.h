#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/LinuxFiles.h"
#include "platform/linux/engine/Engine.h"
#include "platform/linux/engine/EngineDiscFiles.h"
#include "platform/linux/engine/ImageShelf.h"
#include "support/ManualClock.h"
#include "support/TempDir.h"

namespace korvenal::test {

/// The end of a burn or an erase as the program sees it.
struct Ending {
  bool started = false;
  bool finished = false;
  std::int32_t error = 0;
  int fileErrors = 0;
};

/// An engine with image drives on a shelf of its own.
class EngineFixture : public ::testing::Test {
 protected:
  EngineFixture() { restart(); }

  /// Ends the program and starts it again.
  void restart(int drives = 2);
  /// A blank disc in V, which is selected.
  void blank(std::uint8_t type, std::int64_t blocks = 0);
  void insert(const std::string& parent, const std::string& name, const std::string& source) {
    engine->do_InsertFileWithName(parent, source, name, "", 0, 0, 0, 0);
  }
  bool prepare() {
    return engine->do_Prepare([] { return false; }) > 0;
  }
  /// Burns what is prepared; `during` runs between all looks at the burn.
  Ending burn(const std::function<void()>& during = {});
  Ending prepareAndBurn() { return prepare() ? burn() : Ending(); }
  Ending erase();
  /// Disc paths of the files that the last burn did not save.
  std::vector<std::string> unsaved();
  std::string image() const { return shelf->discIn('V').file; }
  /// The content of a file on the disc in V, or an error text.
  std::string readDisc(const std::string& discPath);
  /// The output of a program that looks at a disc, with its exit code in front: "0\n...".
  static std::string run(const std::vector<std::string>& words);

  TempDir dir;
  ManualClock clock;
  LinuxFiles files{nullptr};
  std::unique_ptr<ImageShelf> shelf;
  SlowCalls calls;
  std::unique_ptr<Engine> engine;
  std::unique_ptr<EngineDiscFiles> disc;
};

}  // namespace korvenal::test
