#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::ContainsRegex;

mode_t modeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// What is private stays so: on the discs, and where the program keeps its own files.
class FolderLook : public ConsoleFixture {
 protected:
  void age(const std::string& folder) const {
    const timespec then[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};  // 9 September 2001
    ::utimensat(AT_FDCWD, folder.c_str(), then, 0);
  }
  std::string listing(const std::string& image) const {
    EXPECT_EQ(runProgram({"bsdtar", "-tvf", image}, temp / "list"), 0);
    return test::TempDir::read(temp / "list");
  }
};

TEST_F(FolderLook, FoldersBearTheirBitsAndDatesOnEveryDisc) {
  // More than one disc takes, so that the folder is made again on the second.
  for (const char* name : {"1", "2", "3"})
    temp.sparse(std::string("source/private/below/") + name, 250'000'000);
  ::chmod((source + "private/below").c_str(), 0750);
  ::chmod((source + "private").c_str(), 0700);
  ::chmod(source.c_str(), 0711);
  for (const char* folder : {"private/below", "private", ""}) age(source + folder);
  const Outcome outcome = run(backup("default ExcludeTopFolder 0\n"));
  ASSERT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  int discs = 0;
  for (const auto& entry : fs::directory_iterator(temp / "app/Discs")) {
    if (entry.path().extension() != ".iso") continue;
    ++discs;
    const std::string list = listing(entry.path());
    EXPECT_THAT(list, ContainsRegex("drwx--x--x .* 2001 ./source\n"));
    EXPECT_THAT(list, ContainsRegex("drwx------ .* 2001 ./source/private\n"));
    EXPECT_THAT(list, ContainsRegex("drwxr-x--- .* 2001 ./source/private/below\n"));
  }
  EXPECT_EQ(discs, 2);
}

TEST_F(FolderLook, TheProgramsOwnFolderIsPrivateUnlessAPersonMadeIt) {
  temp.write("source/a", "a");
  const mode_t before = ::umask(022);
  const std::string script = temp.write("script", backup(""));
  const auto console = [&](const std::string& app) {
    return runProgram({KORVENAL_CONSOLE, "--app", app, "--yes", script}, temp / "said");
  };
  ASSERT_EQ(console(temp / "new/app"), 0) << test::TempDir::read(temp / "said");
  EXPECT_EQ(modeOf(temp / "new/app"), 0700U);
  temp.makeFolder("mine");
  ::chmod((temp / "mine").c_str(), 0755);
  ASSERT_EQ(console(temp / "mine"), 0);
  EXPECT_EQ(modeOf(temp / "mine"), 0755U);
  ASSERT_EQ(::setenv("XDG_DATA_HOME", temp.makeFolder("data").c_str(), 1), 0);
  temp.makeFolder("data/korvenal");
  ::chmod((temp / "data/korvenal").c_str(), 0755);
  ASSERT_EQ(runProgram({KORVENAL_CONSOLE, "--yes", script}, temp / "said"), 0);
  EXPECT_EQ(modeOf(temp / "data/korvenal"), 0700U) << "made by an older version of the program";
  ::unsetenv("XDG_DATA_HOME");
  ::umask(before);
  int files = 0;
  for (const char* app : {"new/app", "mine"})
    for (const auto& entry : fs::recursive_directory_iterator(temp / app)) {
      const auto bits = fs::status(entry).permissions();
      if (entry.path().extension() == ".log") continue;
      EXPECT_EQ(bits & (fs::perms::group_all | fs::perms::others_all), fs::perms::none) << entry;
      ++files;
    }
  EXPECT_GT(files, 8);
}

}  // namespace
}  // namespace korvenal::console
