#include "platform/linux/LinuxWalker.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/TempDir.h"

namespace korvenal {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Notes a walk as lines: "> path" on entering, "path" or "path ?" (a name no disc can hold) for a
/// report, "! reason path" for what was skipped. Paths are relative to the start.
class NotingSink : public WalkSink {
 public:
  explicit NotingSink(std::string start) : start_(std::move(start)) {}

  std::vector<std::string> lines;
  std::vector<WalkEntry> entries;
  std::function<void(const std::string&)> onEnter = [](const std::string&) {};
  std::size_t most = SIZE_MAX;
  int pausesAllowed = INT_MAX;

  void enterFolder(const WalkEntry& folder) override {
    lines.push_back("> " + relative(folder.path()));
    onEnter(relative(folder.path()));
  }
  bool report(const WalkEntry& entry) override {
    lines.push_back(relative(entry.path()) + (entry.isFolder ? "/" : "") +
                    (entry.holdable ? "" : " ?"));
    entries.push_back(entry);
    return lines.size() < most;
  }
  bool skipped(WalkSkip reason, const std::string& path) override {
    lines.push_back("! " + std::to_string(static_cast<int>(reason)) + " " + relative(path));
    return lines.size() < most;
  }
  bool pause() override { return pausesAllowed-- > 0; }

 private:
  std::string relative(const std::string& path) const {
    return path.starts_with(start_) ? path.substr(start_.size()) : path;
  }
  std::string start_;
};

std::string line(WalkSkip reason, const std::string& path) {
  return "! " + std::to_string(static_cast<int>(reason)) + " " + path;
}

}  // namespace

class WalkerTest : public testing::Test {
 protected:
  std::vector<std::string> walk(const WalkFilters& filters = {}, bool descend = true) {
    NotingSink sink(folder_.path());
    walker_.walk(folder_.path(), descend, filters, sink);
    return sink.lines;
  }
  std::vector<std::string> walkFile(const std::string& path, const WalkFilters& filters = {}) {
    NotingSink sink(folder_.path());
    walker_.walkFile(path, filters, sink);
    return sink.lines;
  }
  void setTime(const std::string& name, UnixTime seconds, long nanoseconds = 0) {
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder_ / name).c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
  }

  test::TempDir folder_;
  LinuxWalker walker_;
};

TEST_F(WalkerTest, EntriesComeInTheOrderOfBytesAndContentsBeforeTheirFolder) {
  for (const char* name : {"b/2", "b/1", "b.txt", "B", "a-very-long-name-2", "a-very-long-name-1",
                           "a-very-l", "\xC3\xA4", "c/d/e"})
    folder_.write(name, "x");
  EXPECT_THAT(walk(),
              ElementsAre("B", "a-very-l", "a-very-long-name-1", "a-very-long-name-2", "> b", "b/1",
                          "b/2", "b/", "b.txt", "> c", "> c/d", "c/d/e", "c/d/", "c/", "\xC3\xA4"));
  EXPECT_THAT(walk({}, false), ElementsAre("B", "a-very-l", "a-very-long-name-1",
                                           "a-very-long-name-2", "b.txt", "\xC3\xA4"));
}

TEST_F(WalkerTest, AnEntryTellsSizeAndTime) {
  folder_.write("file", "12345");
  folder_.makeFolder("folder");
  setTime("file", -5, 123'456'789);
  NotingSink sink(folder_.path());
  walker_.walk(folder_.path(), true, {}, sink);
  ASSERT_EQ(sink.entries.size(), 2U);
  EXPECT_EQ(sink.entries[0].size, 5);
  EXPECT_EQ(sink.entries[0].modified, -5);
  EXPECT_EQ(sink.entries[0].modifiedNanoseconds, 123'456'789);
  EXPECT_EQ(sink.entries[1].size, 0);
}

TEST_F(WalkerTest, PatternsDecideOnFilesAndCutOffFolders) {
  for (const char* name : {"a.jpg", "a.txt", "sub/B.JPG", "cache/c.jpg", "sub.jpg/d.txt"})
    folder_.write(name, "");
  WalkFilters filters;
  filters.include = {"*.jpg"};
  filters.exclude = {"CACHE", "a.t?t"};
  EXPECT_THAT(walk(filters),
              ElementsAre("a.jpg", "> sub", "sub/B.JPG", "sub/", "> sub.jpg", "sub.jpg/"));
  filters.exclude = {"*"};
  EXPECT_THAT(walk(filters), IsEmpty());
}

TEST_F(WalkerTest, TheDateRuleHoldsForFilesAlone) {
  for (const char* name : {"old/new", "old/equal", "old/older"}) folder_.write(name, "");
  setTime("old/new", 2000);
  setTime("old/equal", 1000);
  setTime("old/older", 999, 999'999'999);
  setTime("old", 5);
  WalkFilters filters;
  filters.earliest = 1000;
  EXPECT_THAT(walk(filters), ElementsAre("> old", "old/equal", "old/new", "old/"));
}

TEST_F(WalkerTest, ExcludedAttributesCutOffFolders) {
  folder_.write(".hidden/file", "");
  folder_.write("read-only", "");
  folder_.write("plain/.dot", "");
  ASSERT_EQ(::chmod((folder_ / "read-only").c_str(), 0444), 0);
  WalkFilters filters;
  filters.excludeAttributes = AttributeHidden | AttributeReadOnly;
  EXPECT_THAT(walk(filters), ElementsAre("> plain", "plain/"));
}

TEST_F(WalkerTest, LinksToFilesAreFilesAndAllElseIsToldAsSkipped) {
  folder_.write("a", "123");
  folder_.makeFolder("b");
  ASSERT_EQ(::symlink("a", (folder_ / "c-file").c_str()), 0);
  ASSERT_EQ(::symlink("..", (folder_ / "d-folder").c_str()), 0);
  ASSERT_EQ(::symlink("e-loop", (folder_ / "e-loop").c_str()), 0);
  ASSERT_EQ(::symlink("nowhere", (folder_ / "f-broken").c_str()), 0);
  ASSERT_EQ(::mkfifo((folder_ / "g-pipe").c_str(), 0600), 0);
  ASSERT_EQ(::mknod((folder_ / "h-socket").c_str(), S_IFSOCK | 0600, 0), 0);
  WalkFilters filters;
  filters.excludeAttributes = AttributeDevice | AttributeVolumeLabel;
  EXPECT_THAT(
      walk(filters),
      ElementsAre("a", "> b", "b/", "c-file", line(WalkSkip::LinkToFolder, "d-folder"),
                  line(WalkSkip::BrokenLink, "e-loop"), line(WalkSkip::BrokenLink, "f-broken"),
                  line(WalkSkip::Pipe, "g-pipe"), line(WalkSkip::Socket, "h-socket")));
  // What the filters exclude anyway is not told, nor are folders without descent.
  filters.include = {"c*"};
  filters.exclude = {"d*"};
  EXPECT_THAT(walk(filters), ElementsAre("> b", "b/", "c-file"));
  EXPECT_THAT(walk({}, false),
              testing::Not(testing::Contains(line(WalkSkip::LinkToFolder, "d-folder"))));
}

TEST_F(WalkerTest, TheStartMayBeALinkAndIsToldWhenMissing) {
  folder_.write("real/file", "");
  ASSERT_EQ(::symlink("real", (folder_ / "link").c_str()), 0);
  NotingSink sink(folder_.path());
  for (const char* start : {"link", "missing"}) walker_.walk(folder_ / start, true, {}, sink);
  EXPECT_THAT(sink.lines, ElementsAre("link/file", line(WalkSkip::UnreadableFolder, "missing/")));
}

TEST_F(WalkerTest, UnreadableFoldersAreTold) {
  if (::geteuid() == 0) GTEST_SKIP() << "everything is readable for this user";
  folder_.write("locked/file", "");
  folder_.write("names-only/file", "");
  ASSERT_EQ(::chmod((folder_ / "locked").c_str(), 0), 0);
  ASSERT_EQ(::chmod((folder_ / "names-only").c_str(), 0400), 0);
  EXPECT_THAT(walk(), ElementsAre(line(WalkSkip::UnreadableFolder, "locked/"), "> names-only",
                                  line(WalkSkip::UnreadableFolder, "names-only/"), "names-only/"));
}

TEST_F(WalkerTest, NamesThatNoDiscCanHoldAreReportedOnceAndNotWalked) {
  folder_.write("back\\slash", "");
  folder_.write("line\nbreak/file", "");
  folder_.write("\xFFstray", "");
  EXPECT_THAT(walk(), ElementsAre("back\\slash ?", "line\nbreak/ ?", "\xFFstray ?"));
}

TEST_F(WalkerTest, WhatVanishesDuringTheWalkIsAsIfItHadNeverBeenThere) {
  for (const char* name : {"a/file", "b/file", "c", "d"}) folder_.write(name, "");
  NotingSink sink(folder_.path());
  sink.onEnter = [&](const std::string&) {
    std::filesystem::remove_all(folder_ / "b");
    std::filesystem::remove(folder_ / "c");
  };
  walker_.walk(folder_.path(), true, {}, sink);
  EXPECT_THAT(sink.lines, ElementsAre("> a", "a/file", "a/", "d"));
}

TEST_F(WalkerTest, AStopEndsTheWalkAtOnceWhereverItFalls) {
  for (const char* name : {"a/b/1", "a/b/2", "a/3", "c"}) folder_.write(name, "");
  ASSERT_EQ(::symlink(".", (folder_ / "d").c_str()), 0);
  const std::size_t all = walk().size();
  for (std::size_t most = 1; most <= all; ++most) {
    NotingSink sink(folder_.path());
    sink.most = most;
    walker_.walk(folder_.path(), true, {}, sink);
    // Only entering a folder cannot end a walk.
    EXPECT_GE(sink.lines.size(), most);
    EXPECT_FALSE(sink.lines.back().starts_with("> "));
  }
}

TEST_F(WalkerTest, AWalkThatReportsNothingStillPauses) {
  for (int i = 0; i < 1000; ++i) folder_.write(std::to_string(i), "");
  WalkFilters filters;
  filters.include = {"nothing"};
  NotingSink sink(folder_.path());
  walker_.walk(folder_.path(), true, filters, sink);
  EXPECT_LT(sink.pausesAllowed, INT_MAX - 3);
}

TEST_F(WalkerTest, DepthIsBoundedNeitherByDescriptorsNorByPathLengths) {
  constexpr int Levels = 1100;  // above the usual limit of descriptors
  int folder = ::open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY);
  for (int i = 0; i < Levels; ++i) {
    ASSERT_EQ(::mkdirat(folder, "middle", 0700), 0);
    ::close(::openat(folder, "z", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const int below = ::openat(folder, "middle", O_RDONLY | O_DIRECTORY);
    ASSERT_GE(below, 0);
    ::close(folder);
    folder = below;
  }
  ::close(folder);
  NotingSink sink(folder_.path());
  walker_.walk(folder_.path(), true, {}, sink);
  // Every level is entered, left, and goes on with its file behind the folder.
  EXPECT_EQ(sink.lines.size(), 3U * Levels);
  EXPECT_EQ(sink.lines.back(), "z");
}

TEST_F(WalkerTest, AFolderMovedAwayFromBelowIsNotTakenForItsParent) {
  std::string deep;
  for (int i = 0; i < 140; ++i) deep += "m/";
  folder_.write(deep + "last", "");
  folder_.write("m/m/z", "");
  NotingSink sink(folder_.path());
  const std::string below = deep.substr(0, 2 * 5);
  sink.onEnter = [&](const std::string& entered) {
    if (entered + "/" == deep) std::filesystem::rename(folder_ / below, folder_ / "moved");
  };
  walker_.walk(folder_.path(), true, {}, sink);
  // The file behind the folder cannot be reached any more, and that is told.
  EXPECT_THAT(sink.lines, testing::Contains(line(WalkSkip::UnreadableFolder, "m/m/")));
  EXPECT_THAT(sink.lines, testing::Not(testing::Contains("m/m/z")));
  EXPECT_EQ(sink.lines.back(), "m/");
}

TEST_F(WalkerTest, AFileItemObeysAllFiltersButTheIncludePatterns) {
  const std::string file = folder_.write("a.txt", "12");
  ASSERT_EQ(::symlink("a.txt", (folder_ / "link").c_str()), 0);
  setTime("a.txt", 1000);
  WalkFilters filters;
  filters.include = {"*.jpg"};
  filters.earliest = 1000;
  EXPECT_THAT(walkFile(file, filters), ElementsAre("a.txt"));
  EXPECT_THAT(walkFile(folder_ / "link", filters), ElementsAre("link"));
  filters.earliest = 1001;
  EXPECT_THAT(walkFile(file, filters), IsEmpty());
  filters = {};
  filters.exclude = {"A*"};
  EXPECT_THAT(walkFile(file, filters), IsEmpty());
  EXPECT_THAT(walkFile(folder_.path()), IsEmpty());
  EXPECT_THAT(walkFile(folder_ / "missing"), ElementsAre(line(WalkSkip::Gone, "missing")));
}

TEST_F(WalkerTest, WhatIsLeftOutIsKnownByAnyName) {
  folder_.write("kept", "");
  const std::string file = folder_.write("own/file", "");
  std::filesystem::create_hard_link(file, folder_ / "second-name");
  std::filesystem::create_directory_symlink(folder_ / "own", folder_ / "link");
  WalkFilters filters;
  filters.leaveOut = {folder_ / "link", file, folder_ / "not-there"};
  EXPECT_THAT(walk(filters),
              ElementsAre("kept", line(WalkSkip::LinkToFolder, "link"),
                          line(WalkSkip::LeftOut, "own/"), line(WalkSkip::LeftOut, "second-name")));
  EXPECT_THAT(walkFile(file, filters), ElementsAre(line(WalkSkip::LeftOut, "own/file")));
  NotingSink sink(folder_.path());
  filters.leaveOut = {folder_ / "own"};
  walker_.walk(folder_ / "own", true, filters, sink);
  EXPECT_THAT(sink.lines, ElementsAre("own/file")) << "where a walk starts is wanted";
}

}  // namespace korvenal
