#include <filesystem>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"
#include "restore/IndexLines.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// What stands on a disc is compared with what the index and the disc itself say of it.
class WhatADiscSays : public ConsoleFixture {
 protected:
  bool isRestored(const std::string& path) const { return fs::exists(target + "/" + path); }
};

TEST_F(WhatADiscSays, AFileOfAnotherSizeThanTheIndexTellsIsNotRestored) {
  temp.write("disc/a.txt", "of another backup");
  temp.write("disc/film/film.001", "12");
  temp.write("disc/film/film.002", "456");
  temp.write("disc/z.txt", "right");
  ASSERT_EQ(runProgram({"xorriso", "-outdev", "stdio:" + (temp / "disc.iso"), "-volid", "Backup #1",
                        "-map", temp / "disc", "/"},
                       temp / "printed"),
            0);
  const std::string index = temp.write(
      "_KORVEN{Demo(2026-11-22-10-00-F)}.bdx",
      test::IndexLines().file("a.txt", 5).split("film", 6, {1, 1}).file("z.txt", 5).text());
  feeder = false;
  const Outcome outcome = run("disc insert V " + (temp / "disc.iso") + "\nindex " + index +
                              "\nrestore " + target + "\nerrors");
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_EQ(test::TempDir::read(target + "/z.txt"), "right");
  EXPECT_FALSE(isRestored("a.txt") || isRestored("film")) << outcome.out;
  for (const char* file : {"a.txt", "film"})
    EXPECT_THAT(outcome.out,
                HasSubstr("The file on disc is not the one in the index.  " + target + "/" + file));
}

TEST_F(WhatADiscSays, AFileThatFailedInMidBurnIsNotRestored) {
  temp.sparse("source/large", 150'000'000);
  temp.write("source/z.txt", "saved");
  whileWaiting = [this, cut = false]() mutable {
    if (cut) return;
    for (const auto& entry : fs::directory_iterator(temp / "app/Discs"))
      cut = cut || (entry.path().extension() == ".iso" && entry.file_size() > 1'000'000);
    if (cut) fs::resize_file(source + "large", 70'000'000);
  };
  const Outcome burned = run(backup(""));
  EXPECT_EQ(burned.code, ExitCode::Failed) << burned.out;
  whileWaiting = {};
  const Outcome outcome = run("index\nrestore " + target + "\nerrors");
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr("The file was not saved when this disc was burned."));
  EXPECT_FALSE(isRestored("large")) << outcome.out;
  EXPECT_EQ(test::TempDir::read(target + "/z.txt"), "saved");
}

}  // namespace
}  // namespace korvenal::console
