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
  FileOutcome append(const std::string& path, const std::string& source = "a") {
    return target_->doAppendFileProgress(source_ / source, path, nullptr);
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
    EXPECT_FALSE(append(path)) << path;
    EXPECT_FALSE(target_->doDeleteFile(path)) << path;
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
  EXPECT_EQ(append("second").code, EMLINK);
  ASSERT_TRUE(copy("second"));
  EXPECT_EQ(content("second"), "content");
  EXPECT_EQ(test::TempDir::read(outside_ / "secret"), "untouched");
}

TEST_F(TargetFolderTest, OnlyRegularFilesAreTouched) {
  folder_.makeFolder("folder");
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  for (const char* path : {"folder", "pipe"}) {
    EXPECT_FALSE(copy(path)) << path;
    EXPECT_FALSE(append(path)) << path;
    EXPECT_FALSE(target_->doDeleteFile(path)) << path;
  }
  EXPECT_TRUE(copy("file"));
  EXPECT_FALSE(target_->doCreateFolderPath("file\\below"));
  EXPECT_TRUE(target_->doDeleteFile("file"));
  EXPECT_TRUE(target_->doDeleteFile("file"));
  EXPECT_TRUE(target_->doDeleteFile("no\\such"));
}

TEST_F(TargetFolderTest, PiecesAppendInOrder) {
  for (const char* source : {"a", "a", "large"}) ASSERT_TRUE(append("x\\joined", source));
  EXPECT_EQ(content("x/joined"), "contentcontent" + std::string(2 * Piece + 1, 'x'));
}

TEST_F(TargetFolderTest, AStopOrAShortSourceLeavesAPartThatCountsAsOld) {
  std::vector<std::int64_t> told;
  const auto stopAtTheSecond = [&](std::int64_t piece) {
    told.push_back(piece);
    return piece == 2;
  };
  EXPECT_EQ(copy("file", "large", stopAtTheSecond).code, FileOutcome::Stopped);
  EXPECT_THAT(told, testing::ElementsAre(1, 2));
  EXPECT_EQ(content("file").size(), 2 * Piece);
  EXPECT_EQ(statusOf("file").st_mtim.tv_sec, 0);

  const auto cutSource = [&](std::int64_t) {
    std::filesystem::resize_file(source_ / "large", Piece + 1);
    return false;
  };
  const FileOutcome failed = copy("file", "large", cutSource);
  EXPECT_EQ(failed.code, EIO);
  EXPECT_FALSE(failed.text.empty());
  EXPECT_EQ(content("file").size(), Piece);
  EXPECT_EQ(statusOf("file").st_mtim.tv_sec, 0);
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
