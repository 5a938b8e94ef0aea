#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/linux/LinuxTargetFolder.h"
#include "support/TempDir.h"

namespace korvenal {

namespace {

constexpr std::size_t Piece = static_cast<std::size_t>(FileView::PieceBytes);

}  // namespace

class TargetFolderTest : public testing::Test {
 protected:
  TargetFolderTest() {
    source_.write("a", "content");
    source_.write("large", std::string(2 * Piece + 1, 'x'));
    outside_.write("secret", "untouched");
    target_ = LinuxTargetFolders(nullptr).open(folder_.path());
  }

  FileOutcome copy(const std::string& path, const std::string& source = "a",
                   const CopyProgress& progress = nullptr) {
    return target_->doCopyFileProgress(source_ / source, path, progress);
  }
  std::unique_ptr<JoinedFile> begin(const std::string& path) {
    FileOutcome outcome;
    return target_->doBeginJoinedFile(path, outcome);
  }
  std::string content(const std::string& path) const { return test::TempDir::read(folder_ / path); }
  struct stat statusOf(const std::string& path) const {
    struct stat status {};
    ::lstat((folder_ / path).c_str(), &status);
    return status;
  }
  void link(const std::string& to, const std::string& path) const {
    ASSERT_EQ(::symlink(to.c_str(), (folder_ / path).c_str()), 0);
  }

  test::TempDir folder_;
  test::TempDir outside_;
  test::TempDir source_;
  std::unique_ptr<TargetFolder> target_;
};

TEST_F(TargetFolderTest, ACopyMakesItsFoldersAndBringsDateAndRights) {
  const timespec times[2] = {{5, 0}, {1'000'000, 0}};
  ASSERT_EQ(::chmod((source_ / "a").c_str(), 06751), 0);
  ASSERT_EQ(::utimensat(AT_FDCWD, (source_ / "a").c_str(), times, 0), 0);
  ASSERT_TRUE(copy("x\\y\\file"));
  EXPECT_EQ(content("x/y/file"), "content");
  EXPECT_EQ(statusOf("x/y/file").st_mtim.tv_sec, 1'000'000);
  EXPECT_EQ(statusOf("x/y/file").st_mode & 07777U, 0751U);
  EXPECT_EQ(target_->doGetInfo("x\\y\\file").size, Fixed4(7));
  EXPECT_EQ(copy("z", "missing").code, ENOENT);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "z"));
}

TEST_F(TargetFolderTest, NoPathLeadsOutside) {
  link(outside_.path(), "link");
  link(outside_ / "secret", "file-link");
  const std::string outside =
      "..\\" + std::filesystem::path(outside_.path()).parent_path().filename().string();
  for (const std::string& path :
       {std::string("link\\new"), std::string("file-link"), outside + "\\new",
        "x\\..\\" + outside + "\\new", std::string("a/b"), std::string("\\\\b"),
        std::string("a\\\\b"), std::string("a\\.\\b"), std::string(".."), std::string(),
        std::string("x\0y", 3)}) {
    EXPECT_FALSE(copy(path)) << path;
    EXPECT_EQ(begin(path), nullptr) << path;
    EXPECT_FALSE(target_->isInUse(path)) << path;
    EXPECT_NE(target_->doGetInfo(path).kind, FileInfo::Kind::File) << path;
  }
  EXPECT_FALSE(target_->doCreateFolderPath("link\\new"));
  EXPECT_FALSE(target_->doCreateFolderPath(outside + "\\new"));
  EXPECT_EQ(test::TempDir::read(outside_ / "secret"), "untouched");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside_.path()), {}), 1);
}

TEST_F(TargetFolderTest, AFolderSwappedForALinkBetweenTwoFilesIsNotFollowed) {
  ASSERT_TRUE(copy("x\\y\\1"));
  std::filesystem::rename(folder_ / "x", folder_ / "moved");
  link(outside_.path(), "x");
  EXPECT_FALSE(copy("x\\y\\2"));
  EXPECT_FALSE(copy("x\\3"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside_.path()), {}), 1);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "moved/y/2")) << "where nobody looks for it";
}

TEST_F(TargetFolderTest, AFolderRemovedBetweenTwoFilesIsMadeAgain) {
  ASSERT_TRUE(copy("x\\y\\1"));
  std::filesystem::remove_all(folder_ / "x");
  EXPECT_TRUE(copy("x\\y\\2"));
  EXPECT_EQ(content("x/y/2"), "content");
}

TEST_F(TargetFolderTest, OverwritingCutsAndNeverReachesASecondName) {
  folder_.write("long", "a much longer content");
  ASSERT_TRUE(copy("long"));
  EXPECT_EQ(content("long"), "content");

  folder_.write("locked", "old");
  ASSERT_EQ(::chmod((folder_ / "locked").c_str(), 0444), 0);
  EXPECT_TRUE(copy("locked"));
  EXPECT_EQ(content("locked"), "content");

  ASSERT_EQ(::link((outside_ / "secret").c_str(), (folder_ / "second").c_str()), 0);
  ASSERT_TRUE(copy("second"));
  EXPECT_EQ(content("second"), "content");
  EXPECT_EQ(test::TempDir::read(outside_ / "secret"), "untouched");
}

TEST_F(TargetFolderTest, OnlyRegularFilesAreTouched) {
  folder_.makeFolder("folder");
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  for (const char* path : {"folder", "pipe"}) {
    EXPECT_FALSE(copy(path)) << path;
    EXPECT_EQ(begin(path), nullptr) << path;
  }
  EXPECT_TRUE(copy("file"));
  EXPECT_FALSE(target_->doCreateFolderPath("file\\below"));
}

TEST_F(TargetFolderTest, AJoinedFileStandsAtItsNameOnlyWhenItIsWhole) {
  folder_.write("x/joined", "before");
  ASSERT_EQ(::chmod((source_ / "a").c_str(), 0640), 0);
  auto file = begin("x\\joined");
  ASSERT_NE(file, nullptr);
  const auto stopAtOnce = [](std::int64_t) { return true; };
  for (const char* source : {"a", "large", "a"}) {
    // What was stopped can be appended again.
    const bool large = std::string(source) == "large";
    EXPECT_TRUE(!large || !file->doAppendFileProgress(source_ / source, stopAtOnce));
    ASSERT_TRUE(file->doAppendFileProgress(source_ / source, nullptr));
  }
  EXPECT_EQ(content("x/joined"), "before");
  ASSERT_TRUE(file->finish());
  EXPECT_EQ(content("x/joined"), "content" + std::string(2 * Piece + 1, 'x') + "content");
  EXPECT_EQ(statusOf("x/joined").st_mode & 07777U, 0640U);
  EXPECT_THAT(test::TempDir::names(folder_ / "x"), testing::ElementsAre("joined"));
}

TEST_F(TargetFolderTest, AStopOrAShortSourceLeavesAllAsItWas) {
  folder_.write("file", "before");
  std::vector<std::int64_t> told;
  const auto stopAtTheSecond = [&](std::int64_t piece) {
    told.push_back(piece);
    EXPECT_EQ(test::TempDir::names(folder_.path()).size(), 2U);
    return piece == 2;
  };
  EXPECT_EQ(copy("file", "large", stopAtTheSecond).code, FileOutcome::Stopped);
  EXPECT_THAT(told, testing::ElementsAre(1, 2));
  EXPECT_EQ(content("file"), "before");

  const auto cutSource = [&](std::int64_t) {
    std::filesystem::resize_file(source_ / "large", Piece + 1);
    return false;
  };
  const FileOutcome failed = copy("file", "large", cutSource);
  EXPECT_EQ(failed.code, EIO);
  EXPECT_FALSE(failed.text.empty());
  EXPECT_EQ(content("file"), "before");
  EXPECT_THAT(test::TempDir::names(folder_.path()), testing::ElementsAre("file"));
}

TEST_F(TargetFolderTest, ANameAsLongAsTheSystemTakesComesBack) {
  const std::string name(255, 'n');
  EXPECT_TRUE(copy(name));
  EXPECT_EQ(content(name), "content");
}

TEST_F(TargetFolderTest, LeftoversGoOnlyWhereSomethingIsWrittenAndNobodyHoldsThem) {
  const std::string leftover = ".korvenal-0123456789abcdef.part";
  const std::vector<std::string> kept = {".korvenal-12-0", ".korvenal-0123456789ABCDEF.part",
                                         ".korvenal-.part"};
  for (const std::string& name : kept) folder_.write("x/" + name, "kept");
  for (const char* place : {"x/", "y/", ""}) folder_.write(place + leftover, "part of a file");
  const auto held = begin("x\\joined");
  ASSERT_NE(held, nullptr);
  const auto other = LinuxTargetFolders(nullptr).open(folder_.path());
  ASSERT_TRUE(other->doCopyFileProgress(source_ / "a", "x\\file", nullptr));
  std::vector<std::string> expected = kept;
  expected.insert(expected.end(), {"file", held->temporaryName()});
  EXPECT_THAT(test::TempDir::names(folder_ / "x"), testing::UnorderedElementsAreArray(expected));
  EXPECT_TRUE(std::filesystem::exists(folder_ / ("y/" + leftover)));
  EXPECT_TRUE(std::filesystem::exists(folder_ / leftover));
}

TEST_F(TargetFolderTest, FoldersAreMadeForTheUserAloneAndDressedLater) {
  folder_.makeFolder("x");
  ASSERT_TRUE(copy("x\\y\\z\\file"));
  EXPECT_EQ(statusOf("x/y/z").st_mode & 07777U, 0700U);
  EXPECT_THAT(target_->takeMadeFolders(), testing::ElementsAre("x\\y", "x\\y\\z"));
  EXPECT_TRUE(target_->takeMadeFolders().empty());
  FileInfo look;
  look.kind = FileInfo::Kind::Folder;
  look.permissions = 0751;
  look.modified = 1'000'000;
  look.owner = ::getuid();
  look.group = ::getgid();
  link(folder_ / "x", "link");
  target_->doDressFolder("link", look);
  target_->doDressFolder("x\\y", look);
  EXPECT_EQ(statusOf("x/y").st_mode & 07777U, 0751U);
  EXPECT_EQ(statusOf("x/y").st_mtim.tv_sec, 1'000'000);
  EXPECT_NE(statusOf("x").st_mtim.tv_sec, 1'000'000) << "through a link";
}

TEST_F(TargetFolderTest, AFolderThatIsGoneTakesNothing) {
  EXPECT_TRUE(target_->doTestWriting());
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
  ASSERT_TRUE(copy("file"));
  EXPECT_TRUE(target_->doSync());
  std::filesystem::remove_all(folder_.path());
  EXPECT_EQ(target_->doTestWriting().code, ENOENT);
}

TEST_F(TargetFolderTest, AFileThatAnotherWritesOrLocksIsInUse) {
  const std::string file = folder_.write("file", "x");
  EXPECT_FALSE(target_->isInUse("file"));
  EXPECT_FALSE(target_->isInUse("missing"));
  {
    const Descriptor writer(::open(file.c_str(), O_WRONLY));
    EXPECT_TRUE(target_->isInUse("file"));
  }
  {
    const Descriptor reader(::open(file.c_str(), O_RDONLY));
    EXPECT_FALSE(target_->isInUse("file"));
    ASSERT_EQ(::flock(reader.get(), LOCK_SH), 0);
    EXPECT_TRUE(target_->isInUse("file"));
  }
  EXPECT_FALSE(target_->isInUse("file"));
}

TEST_F(TargetFolderTest, ABadPathLeavesNothingBehind) {
  for (const std::string path : {"A\\..\\..\\x", "A\\B\\.\\x", "A\\\\x", "A\\b/c\\x", "A\\.."}) {
    EXPECT_EQ(copy(path).code, EINVAL) << path;
    EXPECT_EQ(target_->doCreateFolderPath(path).code, EINVAL) << path;
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path())) << path;
  }
}

}  // namespace korvenal
