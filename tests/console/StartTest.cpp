#include <gmock/gmock.h>

#include <filesystem>

#include "console/OtherProgram.h"
#include "console/PipedProgram.h"
#include "support/TempDir.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class StartTest : public testing::Test {
 protected:
  StartTest() { setenv("TMPDIR", temp_.makeFolder("scratch").c_str(), 1); }
  ~StartTest() override {
    unsetenv("TMPDIR");
    unsetenv("XDG_DATA_HOME");
  }

  int scratchFiles() const {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(temp_ / "scratch"))
      files += entry.is_regular_file() ? 1 : 0;
    return files;
  }
  bool isScratchEmpty() const { return fs::is_empty(temp_ / "scratch"); }

  test::TempDir temp_;
};

TEST_F(StartTest, ASecondProgramLeavesTheIndexOfTheFirstAlone) {
  temp_.write("source/file", "content");
  setenv("XDG_DATA_HOME", (temp_ / "one").c_str(), 1);
  PipedProgram first({KORVENAL_CONSOLE, "--yes"});
  first.say("new One\nadd '" + temp_.path() + "source'\nestimate\nrecords\n");
  ASSERT_TRUE(first.waitFor("No disc record.")) << first.said();
  ASSERT_EQ(scratchFiles(), 1) << "the index";

  setenv("XDG_DATA_HOME", (temp_ / "two").c_str(), 1);
  const std::string look = temp_.write("look", "records\n");
  EXPECT_EQ(runProgram({KORVENAL_CONSOLE, "--yes", look}, temp_ / "out"), 0);
  EXPECT_EQ(scratchFiles(), 1);
  EXPECT_EQ(first.end(), 0);
  EXPECT_TRUE(isScratchEmpty());
}

TEST_F(StartTest, TheScriptThatBuildsAndStartsLeavesNoFile) {
  const auto script = [this](const std::string& name, const std::string& lines) {
    const std::string path = temp_.write(name, "#!/bin/sh\n" + lines + "\n");
    fs::permissions(path, fs::perms::owner_all);
  };
  script("project/scripts/install-dependencies", "exit 0");
  script("project/build/src/korvenal-console", "echo started \"$@\"");
  fs::copy_file(KORVENAL_SOURCE_DIR "/run", temp_ / "project/run");
  const auto runs = [&](const std::string& cmake) {
    script("tools/cmake", cmake);
    return runProgram({"sh", "-c",
                       "PATH='" + (temp_ / "tools") + "':\"$PATH\" '" + (temp_ / "project/run") +
                           "' console one two 2>&1"},
                      temp_ / "out");
  };
  EXPECT_EQ(runs("echo building"), 0);
  EXPECT_EQ(test::TempDir::read(temp_ / "out"), "started one two\n");
  EXPECT_TRUE(isScratchEmpty());
  EXPECT_EQ(runs("echo it does not build; exit 2"), 1);
  EXPECT_THAT(test::TempDir::read(temp_ / "out"), HasSubstr("it does not build"));
  EXPECT_TRUE(isScratchEmpty());
}

}  // namespace
}  // namespace korvenal::console
