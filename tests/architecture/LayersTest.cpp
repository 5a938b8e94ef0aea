#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

// Holds the layers: what each folder of src/ may include, read from the include lines themselves.

namespace {

namespace fs = std::filesystem;

struct Include {
  std::string from;    ///< path below src/
  std::string folder;  ///< folder of `from`, as `LayerOf` names it
  std::string target;
  bool system;
};

/// "platform", "linux" or the first folder; "main" for the files that tie all.
std::string folderOf(const std::string& path) {
  if (path.starts_with("platform/linux/")) return "linux";
  const std::string first = path.substr(0, path.find('/'));
  if (first == "start") return "main";
  if ((first == "console" || first == "ui") && path == first + "/main.cpp") return "main";
  return first;
}

std::vector<Include> allIncludes() {
  std::vector<Include> found;
  const fs::path root = fs::path(KORVENAL_SOURCE_DIR) / "src";
  const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp" && extension != ".c") continue;
    std::ifstream in(entry.path());
    const std::string from = fs::relative(entry.path(), root).generic_string();
    for (std::string line; std::getline(in, line);) {
      std::smatch match;
      if (std::regex_search(line, match, pattern))
        found.push_back({from, folderOf(from), match[2], match[1] == "<"});
    }
  }
  return found;
}

const std::map<std::string, std::set<std::string>> Allowed = {
    {"platform", {"platform"}},
    {"linux", {"platform", "linux"}},
    {"core", {"platform", "core"}},
    {"job", {"platform", "core", "job", "device"}},
    {"device", {"platform", "core", "device"}},
    {"records", {"platform", "core", "records"}},
    {"plan", {"platform", "core", "job", "plan"}},
    {"burn", {"platform", "core", "job", "plan", "device", "records", "burn"}},
    {"restore", {"platform", "core", "job", "plan", "device", "records", "burn", "restore"}},
    {"erase", {"platform", "core", "device", "records", "burn", "erase"}},
    {"tray", {"platform", "core", "tray"}},
    {"app",
     {"platform", "core", "job", "plan", "device", "records", "burn", "restore", "erase", "tray",
      "app"}},
};

TEST(Layers, EveryFolderIncludesOnlyItselfAndThoseBelow) {
  const auto includes = allIncludes();
  ASSERT_GT(includes.size(), 50U);
  for (const Include& include : includes) {
    if (include.system) continue;
    const auto rule = Allowed.find(include.folder);
    if (rule == Allowed.end()) continue;
    EXPECT_TRUE(rule->second.contains(folderOf(include.target)))
        << include.from << " includes " << include.target;
  }
}

TEST(Layers, FrontEndsSeeNoImplementationOfThePlatformButInMain) {
  for (const Include& include : allIncludes()) {
    if (include.system || (include.folder != "console" && include.folder != "ui")) continue;
    EXPECT_NE(folderOf(include.target), "linux") << include.from << " includes " << include.target;
  }
}

TEST(Layers, LogicIsPlainCppWithoutToolkitsOrSystemCalls) {
  const std::regex foreign(
      R"(^(Q[A-Z]|Qt|libburn|libisofs|zip|minizip|sqlite3|sys/|unistd|fcntl|dirent|linux/|unicode/|libdeflate|poll|pthread))");
  for (const Include& include : allIncludes()) {
    if (!include.system) continue;
    // Ports are plain as well; Text alone asks a library for the rules of case.
    const bool free = include.folder == "linux" || include.folder == "main" ||
                      include.folder == "ui" || include.folder == "console" ||
                      include.from == "platform/Text.cpp";
    if (free) continue;
    EXPECT_FALSE(std::regex_search(include.target, foreign))
        << include.from << " includes <" << include.target << ">";
  }
}

}  // namespace
