#include "platform/linux/StandardFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "support/TempDir.h"

namespace korvenal {
namespace {

namespace fs = std::filesystem;

/// Sets an environment variable for the time of a scope.
class Environment {
 public:
  Environment(const char* name, const std::string& value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~Environment() {
    if (old_)
      setenv(name_, old_->c_str(), 1);
    else
      unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(StandardFolders, PortableOnlyBesideABinFolderThatStandsInAWritablePlace) {
  const test::TempDir temp;
  const Environment data("XDG_DATA_HOME", temp / "data");
  const Environment scratch("TMPDIR", temp.path());
  const std::string program = temp.makeFolder("program") + "/";

  EXPECT_EQ(findStandardFolders({program, ""}).application, temp / "data/korvenal/");
  temp.makeFolder("program/BIN");
  EXPECT_EQ(findStandardFolders({program, ""}).application, program);
  EXPECT_EQ(findStandardFolders({program, temp / "named"}).application, temp / "named/");
  EXPECT_EQ(findStandardFolders({program, temp / "named"}).bin, program + "BIN/");
}

TEST(StandardFolders, TemporaryFolderIsPrivateAndItsOwn) {
  const test::TempDir temp;
  const Environment scratch("TMPDIR", temp.path());
  const std::string usual = findStandardFolders({}).temporary;
  const std::string one = findStandardFolders({"", "/a"}).temporary;
  const std::string other = findStandardFolders({"", "/b"}).temporary;
  EXPECT_NE(one, usual);
  EXPECT_NE(one, other);
  for (const std::string& folder : {usual, one, other}) {
    EXPECT_TRUE(folder.starts_with(temp.path())) << folder;
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
  }
}

TEST(StandardFolders, ALinkOrAnOpenFolderInTheWayIsNotTrusted) {
  const test::TempDir temp;
  temp.makeFolder("elsewhere");
  fs::create_symlink(temp / "elsewhere", temp / "link");
  EXPECT_FALSE(makePrivateFolder(temp / "link"));

  temp.write("file", "");
  EXPECT_FALSE(makePrivateFolder(temp / "file"));

  fs::permissions(temp.makeFolder("open"), fs::perms::all);
  EXPECT_TRUE(makePrivateFolder(temp / "open"));
  EXPECT_EQ(fs::status(temp / "open").permissions(), fs::perms::owner_all);
}

}  // namespace
}  // namespace korvenal
