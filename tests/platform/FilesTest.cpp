#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/Descriptor.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/SystemFiles.h"
#include "support/TempDir.h"

namespace korvenal {

namespace {

unsigned modeOf(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode : 0U;
}

}  // namespace

class FilesTest : public testing::Test {
 protected:
  test::TempDir folder_;
  LinuxFiles files_{nullptr};
};

TEST_F(FilesTest, TellsWhatLiesAtAPath) {
  const std::string file = folder_.write("a.txt", "12345");
  const std::string hidden = folder_.write(".b", "");
  ASSERT_EQ(::chmod(hidden.c_str(), 0444), 0);
  ASSERT_EQ(::symlink("a.txt", (folder_ / "link").c_str()), 0);
  ASSERT_EQ(::symlink(".", (folder_ / "folder").c_str()), 0);
  ASSERT_EQ(::symlink("nowhere", (folder_ / "broken").c_str()), 0);
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);

  EXPECT_EQ(files_.doGetFileSize(file), Fixed4(5));
  EXPECT_EQ(files_.doGetInfo(folder_ / "link").size, Fixed4(5));
  EXPECT_TRUE(files_.doFolderExists(folder_ / "folder"));
  EXPECT_EQ(files_.doGetInfo(folder_ / "folder").size, Fixed4());
  EXPECT_FALSE(files_.doFileExists(folder_ / "broken"));
  EXPECT_EQ(files_.doGetInfo(hidden).attributes, AttributeReadOnly | AttributeHidden);
  EXPECT_TRUE(files_.doIsFile(folder_ / "pipe"));
  EXPECT_EQ(files_.readAll(folder_ / "pipe", 10), std::nullopt);
  for (const std::string& none :
       {std::string("a.txt"), std::string("V:\\a"), std::string(), file + std::string(1, '\0')})
    EXPECT_FALSE(files_.doFileExists(none)) << none;
  EXPECT_EQ(files_.listFolder(folder_.path()),
            (std::vector<std::string>{".b", "a.txt", "broken", "folder", "link", "pipe"}));
  EXPECT_GT(files_.doGetVolumeInfo(file)->totalBytes, Fixed4());
  EXPECT_FALSE(files_.doGetVolumeInfo(folder_ / "broken").has_value());
}

TEST_F(FilesTest, ReadsWholeFilesUpToTheLimit) {
  std::string content(600'000, 'x');
  content[300'000] = '\0';
  const std::string file = folder_.write("a", content);
  EXPECT_EQ(files_.readAll(file, 600'000), content);
  EXPECT_EQ(files_.readAll(file, 599'999), std::nullopt);
  EXPECT_EQ(files_.readPart(file, 299'999, 2), content.substr(299'999, 2));
  EXPECT_EQ(files_.readPart(file, 599'999, 1LL << 60), "x");
  EXPECT_EQ(files_.readPart(file, 600'001, 1), "");
  EXPECT_EQ(files_.readPart(file, -1, 1), std::nullopt);
  // Such a file tells no size.
  EXPECT_FALSE(files_.readAll("/proc/self/status", 100'000).value_or("").empty());
  EXPECT_EQ(files_.readAll("/proc/self/status", 10), std::nullopt);
}

TEST_F(FilesTest, WriteAllReplacesTheFileBehindALinkAndKeepsItsRights) {
  const std::string file = folder_.write("real/settings", "old");
  ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
  ASSERT_EQ(::symlink("real/settings", (folder_ / "link").c_str()), 0);

  EXPECT_TRUE(files_.writeAll(folder_ / "link", "new"));
  EXPECT_TRUE(S_ISLNK(modeOf(folder_ / "link")));
  EXPECT_EQ(test::TempDir::read(file), "new");
  EXPECT_EQ(modeOf(file) & 0777U, 0640U);
  EXPECT_EQ(files_.listFolder(folder_ / "real"), std::vector<std::string>{"settings"});
}

TEST_F(FilesTest, AFailedWriteAllLeavesNothingBehind) {
  folder_.makeFolder("taken/inside");
  EXPECT_EQ(files_.writeAll(folder_ / "taken", "x").code, EISDIR);
  EXPECT_EQ(files_.writeAll(folder_ / "missing/file", "x").code, ENOENT);
  EXPECT_EQ(files_.listFolder(folder_.path()), std::vector<std::string>{"taken"});
}

TEST_F(FilesTest, AFullDiskHasACodeOfItsOwn) {
  const Descriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
  const FileOutcome outcome = SystemFiles::outcomeOf(SystemFiles::writeFully(full.get(), "x", 1));
  EXPECT_EQ(outcome.code, FileOutcome::DiskFull);
  EXPECT_FALSE(outcome.text.empty());
  EXPECT_EQ(SystemFiles::outcomeOf(EDQUOT).code, FileOutcome::DiskFull);
  for (int error = 1; error < 200; ++error) {
    if (error == ENOSPC || error == EDQUOT) continue;
    EXPECT_NE(SystemFiles::outcomeOf(error).code, FileOutcome::DiskFull) << error;
    EXPECT_FALSE(SystemFiles::outcomeOf(error)) << error;
  }
}

TEST_F(FilesTest, ANewFileIsPrivateAndNeverFollowsALink) {
  const std::string victim = folder_.write("victim", "untouched");
  ASSERT_EQ(::symlink(victim.c_str(), (folder_ / "new").c_str()), 0);
  const auto writer = files_.doCreateFile(folder_ / "new");
  ASSERT_NE(writer, nullptr);
  EXPECT_TRUE(writer->write("content"));
  EXPECT_TRUE(writer->finish());
  EXPECT_EQ(test::TempDir::read(victim), "untouched");
  EXPECT_EQ(test::TempDir::read(folder_ / "new"), "content");
  EXPECT_EQ(modeOf(folder_ / "new") & 0777U, 0600U);
}

}  // namespace korvenal
