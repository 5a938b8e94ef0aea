#include <gmock/gmock.h>

#include <filesystem>
#include <iostream>
#include <random>

#include "console/OtherProgram.h"
#include "platform/Text.h"
#include "support/TempDir.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;

constexpr int Kills = 8;
constexpr int FileBytes = 5'000'000;

/// Sets variables of the programs that the test starts, for the time of a scope.
class ChildEnvironment {
 public:
  explicit ChildEnvironment(std::map<std::string, std::string> variables)
      : variables_(std::move(variables)) {
    for (const auto& [name, value] : variables_) setenv(name.c_str(), value.c_str(), 1);
  }
  ~ChildEnvironment() {
    for (const auto& [name, value] : variables_) unsetenv(name.c_str());
  }
  ChildEnvironment(const ChildEnvironment&) = delete;
  ChildEnvironment& operator=(const ChildEnvironment&) = delete;

 private:
  std::map<std::string, std::string> variables_;
};

/// KORVENAL_SEED repeats a run of these tests.
unsigned seedOfThisRun() {
  const char* wanted = std::getenv("KORVENAL_SEED");
  const unsigned seed = wanted != nullptr ? static_cast<unsigned>(std::strtoul(wanted, nullptr, 10))
                                          : std::random_device{}();
  std::cout << "KORVENAL_SEED=" << seed << std::endl;
  return seed;
}

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

  int console(const std::string& script) {
    return runProgram({KORVENAL_CONSOLE, "--app", temp_ / "app", "--yes", script}, temp_ / "out");
  }
  /// The same, killed at the n-th call that changes a file whose path holds the text.
  int killedConsole(const std::string& script, int call, const std::string& path = "") {
    std::map<std::string, std::string> variables = {
        {"LD_PRELOAD", KORVENAL_KILL_AT_CALL},
        {"KORVENAL_KILL_AT", std::to_string(call)},
        {"KORVENAL_KILL_COUNT", temp_ / "count"},
        // The library above comes before that of the sanitizer, and does it no harm.
        {"ASAN_OPTIONS", "verify_asan_link_order=0"}};
    if (!path.empty()) variables["KORVENAL_KILL_PATH"] = path;
    const ChildEnvironment environment(std::move(variables));
    return console(script);
  }
  /// How many such calls the whole script makes.
  int callsOf(const std::string& script, const std::string& path = "") {
    EXPECT_EQ(killedConsole(script, 0, path), 0) << said();
    return static_cast<int>(Text::toInteger(test::TempDir::read(temp_ / "count")));
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
    for (const char* folder : {"app", "scratch"}) {
      if (!fs::exists(temp_ / folder)) continue;
      for (const auto& entry : fs::recursive_directory_iterator(temp_ / folder)) {
        const std::string name = entry.path().filename();
        EXPECT_FALSE(name.starts_with(".korvenal-") || name.starts_with("_KORVEN{"))
            << entry.path();
      }
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

TEST_F(KillTest, WhateverTheCallNothingIsLostAndTheNextStartWorks) {
  const int calls = callsOf(script_);
  ASSERT_GT(calls, 10 * Kills);
  EXPECT_EQ(expectFinishedDiscsWhole(), 2);

  std::mt19937 random(seedOfThisRun());
  for (int i = 0; i < Kills; ++i) {
    fs::remove_all(temp_ / "app");
    // Anywhere in the i-th part of all calls.
    const int part = calls / Kills;
    const int call = 1 + part * i + static_cast<int>(random() % static_cast<unsigned>(part));
    SCOPED_TRACE("killed at call " + std::to_string(call) + " of " + std::to_string(calls));
    const int code = killedConsole(script_, call);
    // Threads may take some calls together that they made one by one before.
    EXPECT_TRUE(code == -SIGKILL || (code == 0 && i + 1 == Kills)) << code;

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

TEST_F(KillTest, NoCallOfThePackingLeavesAFileBehind) {
  const std::string estimate =
      temp_.write("estimate", "new One\nadd '" + temp_.path() + "source'\nestimate\n");
  const int calls = callsOf(estimate, "_KORVEN{");
  ASSERT_GT(calls, 5);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("killed at call " + std::to_string(call) + " of " + std::to_string(calls));
    EXPECT_EQ(killedConsole(estimate, call, "_KORVEN{"), -SIGKILL);
    EXPECT_EQ(console(look_), 0) << said();
    expectNothingStray();
    EXPECT_TRUE(fs::is_empty(temp_ / "scratch"));
  }
}

TEST_F(KillTest, ARestoreThatIsKilledLeavesTheOldFileOrTheNewOne) {
  ASSERT_EQ(console(script_), 0) << said();
  const std::string target = temp_.makeFolder("target");
  const std::string script = temp_.write("restore", "index\nrestore " + target + " --mode 0\n");
  const int calls = callsOf(script, ".part");
  const std::string name = Text::replaceAll(file_, temp_.path(), "target/");
  const std::string restored = fs::exists(temp_ / name) ? name : "target/folder/large.bin";
  ASSERT_GT(calls, 5);
  for (const int call : {1, 2, calls / 2, calls - 1, calls}) {
    SCOPED_TRACE("killed at call " + std::to_string(call) + " of " + std::to_string(calls));
    temp_.write(restored, "as it was");
    EXPECT_EQ(killedConsole(script, call, ".part"), -SIGKILL);
    EXPECT_EQ(test::TempDir::read(temp_ / restored), "as it was");
    ASSERT_EQ(console(script), 0) << said();
    EXPECT_TRUE(test::TempDir::read(temp_ / restored) == test::TempDir::read(file_));
    EXPECT_EQ(test::TempDir::names(fs::path(temp_ / restored).parent_path()).size(), 1U);
  }
}

TEST_F(KillTest, ReportsOutliveTheNextStart) {
  const std::string report = temp_.write("app/LOG/$1.log", "of a program that was killed\n");
  EXPECT_EQ(console(look_), 0) << said();
  EXPECT_EQ(test::TempDir::read(report), "of a program that was killed\n");
  EXPECT_EQ(console(script_), 0) << said();
  EXPECT_FALSE(fs::exists(report)) << "the reports of a run go with it";
}

}  // namespace
}  // namespace korvenal::console
