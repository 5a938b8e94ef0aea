#include "platform/linux/StandardFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>

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

TEST(StandardFolders, EveryApplicationFolderHasAPrivateTemporaryFolderThatGoesWhenEmpty) {
  const test::TempDir temp;
  const Environment scratch("TMPDIR", temp.makeFolder("scratch"));
  const auto temporary = [&](const std::string& wanted, const std::string& data = "data") {
    const Environment home("XDG_DATA_HOME", temp / data);
    return findStandardFolders({"", wanted}).temporary;
  };
  temp.makeFolder("a");
  fs::create_symlink(temp / "a", temp / "link");
  EXPECT_EQ(temporary(temp / "a"), temporary(temp / "link"));
  const std::vector<std::string> all = {temporary(""), temporary("", "other"),
                                        temporary(temp / "a"), temporary(temp / "b")};
  EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size());
  {
    const OwnTemporaryFolder one(all[0]), other(all[1]);
    EXPECT_EQ(one.path(), all[0]);
    for (const std::string& folder : {one.path(), other.path()}) {
      EXPECT_TRUE(folder.starts_with(temp / "scratch/")) << folder;
      EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
    }
    temp.write(other.path().substr(temp.path().size()) + "log", "to be read later");
  }
  EXPECT_FALSE(fs::exists(all[0]));
  EXPECT_TRUE(fs::exists(all[1] + "log"));
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
