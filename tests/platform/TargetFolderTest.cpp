#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "platform/linux/LinuxTargetFolder.h"
#include "support/TempDir.h"

namespace korvenal {

namespace {

/// One disc in drive V whose files are texts; reads fail from `failAt` on.
class TextDisc : public DiscFiles {
 public:
  struct File {
    std::string content;
    unsigned permissions = 0640;
  };
  std::map<std::string, File, std::less<>> files;
  std::int64_t failAt = INT64_MAX;

  FileInfo doGetInfo(char letter, std::string_view path) override {
    const auto stream = open(letter, path);
    return stream ? stream->info() : FileInfo();
  }
  std::optional<VolumeInfo> doGetVolumeInfo(char) override { return std::nullopt; }
  std::vector<std::string> listFolder(char, std::string_view) override { return {}; }
  std::unique_ptr<FileStream> open(char letter, std::string_view path) override {
    const auto found = files.find(path);
    if (letter != 'V' || found == files.end()) return nullptr;
    return std::make_unique<Stream>(found->second, failAt);
  }

 private:
  class Stream : public FileStream {
   public:
    Stream(const File& file, std::int64_t failAt) : file_(file), failAt_(failAt) {
      info_.kind = FileInfo::Kind::File;
      info_.size = Fixed4(static_cast<std::int64_t>(file.content.size()));
      info_.modified = 1'000'000;
      info_.permissions = file.permissions;
    }
    const FileInfo& info() const override { return info_; }
    std::int64_t read(std::int64_t offset, char* buffer, std::size_t bytes) override {
      if (offset + static_cast<std::int64_t>(bytes) > failAt_) return -EIO;
      return static_cast<std::int64_t>(
          file_.content.copy(buffer, bytes, static_cast<std::size_t>(offset)));
    }

   private:
    const File& file_;
    std::int64_t failAt_;
    FileInfo info_;
  };
};

constexpr std::size_t Piece = static_cast<std::size_t>(FileView::PieceBytes);

}  // namespace

class TargetFolderTest : public testing::Test {
 protected:
  TargetFolderTest() {
    disc_.files["a"] = {"content", 0640};
    disc_.files["large"] = {std::string(2 * Piece + 1, 'x'), 0640};
    outside_.write("secret", "untouched");
    target_ = LinuxTargetFolders(&disc_).open(folder_.path());
  }

  FileOutcome copy(const std::string& path, const std::string& source = "a") {
    return target_->doCopyFileProgress("V:\\" + source, path, nullptr);
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
  TextDisc disc_;
  std::unique_ptr<TargetFolder> target_;
};

TEST_F(TargetFolderTest, ACopyMakesItsFoldersAndBringsDateAndRights) {
  disc_.files["s"] = {"x", 06755};
  disc_.files["n"] = {"x", 0};
  ASSERT_TRUE(copy("x\\y\\file"));
  EXPECT_EQ(content("x/y/file"), "content");
  EXPECT_EQ(statusOf("x/y/file").st_mtim.tv_sec, 1'000'000);
  EXPECT_EQ(statusOf("x/y/file").st_mode & 07777U, 0640U);
  ASSERT_TRUE(copy("x\\setuid", "s"));
  EXPECT_EQ(statusOf("x/setuid").st_mode & 07777U, 0755U);
  ASSERT_TRUE(copy("x\\no rights told", "n"));
  EXPECT_EQ(statusOf("x/no rights told").st_mode & 07777U, 0644U);
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
    EXPECT_FALSE(target_->doAppendFileProgress("V:\\a", path, nullptr)) << path;
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
  copy("x\\y\\2");
  copy("x\\3");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside_.path()), {}), 1);
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
  EXPECT_EQ(target_->doAppendFileProgress("V:\\a", "second", nullptr).code, EMLINK);
  ASSERT_TRUE(copy("second"));
  EXPECT_EQ(content("second"), "content");
  EXPECT_EQ(test::TempDir::read(outside_ / "secret"), "untouched");
}

TEST_F(TargetFolderTest, OnlyRegularFilesAreTouched) {
  folder_.makeFolder("folder");
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  for (const char* path : {"folder", "pipe"}) {
    EXPECT_FALSE(copy(path)) << path;
    EXPECT_FALSE(target_->doAppendFileProgress("V:\\a", path, nullptr)) << path;
    EXPECT_FALSE(target_->doDeleteFile(path)) << path;
  }
  EXPECT_TRUE(copy("file"));
  EXPECT_FALSE(target_->doCreateFolderPath("file\\below"));
  EXPECT_TRUE(target_->doDeleteFile("file"));
  EXPECT_TRUE(target_->doDeleteFile("file"));
  EXPECT_TRUE(target_->doDeleteFile("no\\such"));
}

TEST_F(TargetFolderTest, PiecesAppendInOrder) {
  for (int i = 0; i < 2; ++i)
    ASSERT_TRUE(target_->doAppendFileProgress("V:\\a", "x\\joined", nullptr));
  ASSERT_TRUE(target_->doAppendFileProgress("V:\\large", "x\\joined", nullptr));
  EXPECT_EQ(content("x/joined"), "contentcontent" + std::string(2 * Piece + 1, 'x'));
}

TEST_F(TargetFolderTest, AStopOrAReadErrorLeavesAPartThatCountsAsOld) {
  std::vector<std::int64_t> told;
  const auto stopAt = [&](std::int64_t piece) {
    told.push_back(piece);
    return piece == 2;
  };
  EXPECT_EQ(target_->doCopyFileProgress("V:\\large", "file", stopAt).code, FileOutcome::Stopped);
  EXPECT_THAT(told, testing::ElementsAre(1, 2));
  EXPECT_EQ(content("file").size(), 2 * Piece);
  EXPECT_EQ(statusOf("file").st_mtim.tv_sec, 0);

  disc_.failAt = static_cast<std::int64_t>(Piece);
  const FileOutcome failed = copy("file", "large");
  EXPECT_EQ(failed.code, EIO);
  EXPECT_FALSE(failed.text.empty());
  EXPECT_EQ(content("file").size(), Piece);
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

}  // namespace korvenal
