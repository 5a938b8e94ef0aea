#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <random>

#include "console/OtherProgram.h"
#include "platform/Text.h"
#include "support/TempDir.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;

constexpr int Kills = 8;
constexpr int FileBytes = 5'000'000;

class KillTest : public testing::Test {
 protected:
  KillTest() {
    std::mt19937 bytes(1);
    std::string content(FileBytes, '\0');
    for (char& c : content) c = static_cast<char>(bytes());
    file_ = temp_.write("source/folder/large.bin", content);
    written_ = fs::last_write_time(file_);
    setenv("TMPDIR", temp_.makeFolder("scratch").c_str(), 1);
    std::string script = "default Finalize 0\n";
    for (const char* job : {"One", "Two"})
      script += "new " + std::string(job) + "\nset comboDiscType 0\nadd '" + temp_.path() +
                "source'\nbackup\n";
    script_ = temp_.write("backups", script);
    look_ = temp_.write("look", "disc list\nrecords\nrecent\nshow\n");
  }
  ~KillTest() override { unsetenv("TMPDIR"); }

  int console(const std::string& script, int killAfter = Never) {
    return runProgram({KORVENAL_CONSOLE, "--app", temp_ / "app", "--yes", script}, temp_ / "out",
                      killAfter);
  }
  std::string said() const { return test::TempDir::read(temp_ / "out"); }
  std::string discs() const { return temp_ / "app/Discs/"; }

  /// Discs whose profile tells a complete session.
  int expectFinishedDiscsWhole() {
    int whole = 0;
    if (!fs::exists(discs())) return whole;
    for (const auto& entry : fs::directory_iterator(discs())) {
      const std::string image = entry.path();
      if (!image.ends_with(".iso")) continue;
      const std::string profile = test::TempDir::read(image + ".disc");
      if (profile.find("sessions=\n") != std::string::npos) continue;
      ++whole;
      const std::string taken = temp_ / "large.bin";
      EXPECT_EQ(runProgram({"bsdtar", "-xOf", image, "*large.bin"}, taken), 0);
      EXPECT_TRUE(test::TempDir::read(taken) == test::TempDir::read(file_)) << image;
    }
    return whole;
  }
  void expectNothingStray() {
    for (const char* folder : {"app", "scratch"})
      for (const auto& entry : fs::recursive_directory_iterator(temp_ / folder)) {
        const std::string name = entry.path().filename();
        EXPECT_FALSE(name.starts_with(".korvenal-") || name.starts_with("$")) << entry.path();
        EXPECT_FALSE(name.starts_with("_KORVEN{")) << entry.path();
      }
  }

  test::TempDir temp_;
  std::string file_;
  fs::file_time_type written_;
  std::string script_;
  std::string look_;
};

int countOf(const std::string& text, const std::string& word) {
  return static_cast<int>(Text::split(Text::replaceAll(text, word, "\x01"), '\x01').size()) - 1;
}

TEST_F(KillTest, WhateverTheMomentNothingIsLostAndTheNextStartWorks) {
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(console(script_), 0) << said();
  const auto all = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - begin);
  EXPECT_EQ(expectFinishedDiscsWhole(), 2);

  std::mt19937 random(std::random_device{}());
  for (int i = 0; i < Kills; ++i) {
    fs::remove_all(temp_ / "app");
    // Anywhere in the i-th part of the time that all takes.
    const int part = static_cast<int>(all.count()) / Kills;
    const int after = part * i + static_cast<int>(random() % static_cast<unsigned>(part + 1));
    const int code = console(script_, after);
    EXPECT_TRUE(code == -SIGKILL || code == 0) << code;
    SCOPED_TRACE("killed after " + std::to_string(after) + " ms");

    EXPECT_EQ(fs::file_size(file_), static_cast<std::uintmax_t>(FileBytes));
    EXPECT_EQ(fs::last_write_time(file_), written_);
    const int whole = expectFinishedDiscsWhole();
    EXPECT_EQ(console(look_), 0) << said();
    // A record is only ever made of a disc that is done.
    const std::string records = said();
    EXPECT_LE(countOf(records, "Success."), whole) << records;
    EXPECT_GE(countOf(records, "Success.") + 1, whole) << records;
    EXPECT_GE(countOf(records, "Full backup.") + 1, countOf(records, "Success.")) << records;
    expectNothingStray();
  }
  EXPECT_EQ(console(script_), 0) << said();
}

}  // namespace
}  // namespace korvenal::console
