#include <filesystem>
#include <fstream>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using test::TempDir;
using testing::HasSubstr;
using testing::Not;

constexpr std::size_t BytesOfBlock = 2048;
constexpr const char* NotEmpty = "Error: Disc is not empty.";

/// Discs that hold something which a backup must not burn over.
class ForeignDisc : public ConsoleFixture {
 protected:
  ForeignDisc() {
    feeder = false;
    image_ = temp / "app/Discs/Disc.iso";
    temp.write("source/kept.txt", "kept");
    run("default Notice 1");
  }
  void newDisc(const std::string& type) {
    run("disc new V '" + type + "'");
    std::string profile = TempDir::read(image_ + ".disc");
    const std::size_t formatted = profile.find("formatted=0");
    if (formatted != std::string::npos) profile[formatted + 10] = '1';
    std::ofstream(image_ + ".disc") << profile;
  }
  void put(const std::string& bytes, std::size_t at) {
    std::fstream file(image_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(at));
    file << bytes;
  }
  std::string content() const { return TempDir::read(image_); }
  std::string listed() { return run("disc insert V '" + image_ + "'\nindex\nlist\n").out; }

  std::string image_;
};

TEST_F(ForeignDisc, WhatIsNotATreeOfOursIsNotBlank) {
  struct Case {
    const char* what;
    const char* bytes;
    std::size_t block;
    const char* fault;
  };
  const Case cases[] = {
      {"DVD-RAM", "BEA01", 16, ""},
      {"DVD+RW", "BEA01", 16, ""},
      {"DVD-RAM", "some other system", 0, ""},
      {"DVD-RW", "some other system", 31, ""},
      {"DVD+RW", "behind the head", 40, "bad-block=0\n"},
  };
  for (const Case& one : cases) {
    run("disc eject V");
    fs::remove(image_);
    fs::remove(image_ + ".disc");
    newDisc(one.what);
    fs::resize_file(image_, 300 * BytesOfBlock);
    put(one.bytes, one.block * BytesOfBlock + 1);
    std::ofstream(image_ + ".disc", std::ios::app) << one.fault;
    const std::string before = content();
    run("disc insert V '" + image_ + "'");
    EXPECT_NE(run(backup("")).code, ExitCode::Ok) << one.what << one.bytes;
    EXPECT_EQ(record(7), NotEmpty) << one.what << one.bytes;
    EXPECT_EQ(content(), before) << one.what << one.bytes;

    if (one.fault[0] != '\0') continue;
    const Outcome erased = run("disc insert V '" + image_ + "'\n" + backup("set AutoErase 1\n"));
    EXPECT_EQ(erased.code, ExitCode::Ok) << erased.out;
    EXPECT_THAT(erased.out, HasSubstr("Quick erase successfully.")) << one.what << one.bytes;
  }
}

TEST_F(ForeignDisc, ATreeThatCannotBeReadIsNotBurnedOver) {
  newDisc("DVD-R");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  put(std::string(BytesOfBlock, 'x'), 16 * BytesOfBlock);
  const std::string before = content();
  run("disc insert V '" + image_ + "'");
  EXPECT_NE(run(backup("")).code, ExitCode::Ok);
  EXPECT_EQ(record(7), NotEmpty);
  EXPECT_EQ(content(), before);
}

TEST_F(ForeignDisc, AnotherSessionOnADvdRamKeepsTheFirst) {
  newDisc("DVD-RAM");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  fs::rename(source + "kept.txt", source + "second.txt");
  run("disc insert V '" + image_ + "'");
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("Sessions imported successfully."));
  const std::string seen = content();
  EXPECT_NE(seen.rfind("KEPT.TXT"), seen.find("KEPT.TXT")) << "in the newer tree as well";
}

TEST_F(ForeignDisc, ADamagedFolderEndsTheAttemptInItsSentence) {
  newDisc("DVD-R");
  temp.write("source/sub/inner.txt", "inner");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  const std::size_t name = content().find("INNER");
  ASSERT_NE(name, std::string::npos);
  put("\xFF", name - 33);
  const std::string before = content();
  run("disc insert V '" + image_ + "'");
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr("Sessions import failed."));
  EXPECT_THAT(outcome.out, HasSubstr("The folder \\sub of the earlier sessions cannot be read"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("Sessions imported successfully.")));
  EXPECT_EQ(record(7), "Error: Sessions import failed.");
  EXPECT_EQ(content(), before) << "nothing was burned";
}

#ifndef __SANITIZE_ADDRESS__  // which takes more room for itself than any limit leaves
TEST_F(ForeignDisc, AnImportWithoutMemoryEndsInAMessage) {
  newDisc("DVD-R");
  for (int i = 0; i < 8000; ++i) temp.write("source/many/" + std::to_string(i), "");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  const std::string before = content();
  temp.write("small/one.txt", "one");
  run("disc insert V '" + image_ + "'");
  temp.write("app/KORVEN2.dat",
             TempDir::read(temp / "app/KORVEN2.dat") + "\n[ImageDrives]\nFeeder=0\n");
  const std::string script =
      temp.write("script", "new Small\nset comboDiscType 0\nset AutoErase 0\nadd '" +
                               (temp / "small/") + "'\nbackup\n");
  std::string out;
  // The least with which the program comes as far as the import, which wants more.
  for (int limit = 40'000; limit < 400'000 && out.find("Importing previous") == std::string::npos;
       limit += 3000) {
    const std::string shell = "ulimit -v " + std::to_string(limit) +
                              "; exec '" KORVENAL_CONSOLE "' --app '" + temp.path() +
                              "/app' --yes '" + script + "' 2>&1";
    runProgram({"sh", "-c", shell}, temp / "out");
    out = TempDir::read(temp / "out");
  }
  EXPECT_THAT(out, HasSubstr("Sessions import failed."));
  EXPECT_THAT(out, HasSubstr("Out of memory"));
  EXPECT_EQ(content(), before);
}
#endif

}  // namespace
}  // namespace korvenal::console
