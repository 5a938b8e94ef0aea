#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "plan/DateDigits.h"
#include "plan/ScanFixture.h"
#include "platform/Text.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/ZipIndexArchive.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

class BackupIndexFile : public testing::Test, public ScanFixture {
 protected:
  BackupIndexFile() { addItem("/s/a", file("a", 1)); }
};

TEST_F(BackupIndexFile, StaysPlainTextWhenItCannotBePacked) {
  archive.fails = true;
  job.txJobName = " My\tJob ";
  scan();
  const std::string text = files.contents.at(plan.IndexTempPath);
  EXPECT_EQ(plan.IndexSizeFinal, Fixed4(static_cast<std::int64_t>(text.size())));
  const auto lines = Text::split(text, '\n');
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(Text::split(lines[0], '\t').size(), 10U);
  EXPECT_EQ(Text::split(lines[0], '\t')[1], "My Job");
}

TEST_F(BackupIndexFile, StaysPlainTextWhenItPacksLikeABomb) {
  std::vector<ListEntry> entries;
  for (int i = 0; i < 50'000; ++i)
    entries.push_back(file(std::string(200, 'n') + std::to_string(i), 1));
  addItem("/s/f", folder(std::string(150, 'f'), std::move(entries)));
  archive.packed = "small";
  scan();
  EXPECT_THAT(files.contents.at(plan.IndexTempPath), testing::StartsWith("KORVEN"));
  EXPECT_GT(plan.IndexSizeFinal, Fixed4(mostIndexBytesIn(5)));
}

TEST_F(BackupIndexFile, ThatCannotBeWrittenIsTold) {
  workspace.TempFolder = files.brokenFolder;
  scan();
  EXPECT_EQ(plan.vsBuffer.row(1).size, Fixed4(0));
  EXPECT_EQ(grids.vsEvent[0].text(1, 1), "The backup index could not be written.");
}

TEST(DateDigitsOfManyDates, AgreeWithTheCalendarOverChangesOfTheClocks) {
  const char* before = std::getenv("TZ");
  const std::string zoneBefore = before != nullptr ? before : "";
  for (const char* zone : {"CET-1CEST,M3.5.0,M10.5.0/3", "NST3:30NDT,M3.2.0,M11.1.0", "UTC0"}) {
    setenv("TZ", zone, 1);
    tzset();
    DateDigits dates;
    for (UnixTime time = -100'000'000; time < 1'800'000'000; time += 7'201) {
      std::string digits;
      dates.append(digits, time);
      ASSERT_EQ(digits, Dates::digits(time)) << zone << " " << time;
    }
  }
  before != nullptr ? setenv("TZ", zoneBefore.c_str(), 1) : unsetenv("TZ");
  tzset();
}

class ZipIndex : public testing::Test {
 protected:
  bool extracts(const std::string& password = "ZEPHOR", long long maxBytes = 1 << 24) {
    const int result = zip.extract(archive, out, password, maxBytes);
    EXPECT_EQ(result == 0, std::filesystem::exists(out)) << "a failure leaves no file";
    return result == 0 && TempDir::read(out) == content;
  }
  static int run(const std::string& command) {
    return std::system(("LC_ALL=C.UTF-8 " + command + " >/dev/null 2>&1").c_str());
  }

  TempDir dir;
  LinuxFiles files{nullptr};
  ZipIndexArchive zipArchive{files};
  IndexArchive& zip = zipArchive;
  std::string content;
  const std::string name = "_KORVEN{Jöb(2024-01-01-10-10-F)}.bdx";
  const std::string archive = dir / "index.zip", out = dir / "out";

  void SetUp() override {
    for (int i = 0; i < 5000; ++i) content += "2\tFolder\\file" + std::to_string(i * 7919) + "\r\n";
    ASSERT_EQ(zip.compress(archive, dir.write(name, content), "ZEPHOR", [] {}), 0);
  }
};

TEST_F(ZipIndex, IsPrivateAndNamedAndComesBackOnlyWithThePassword) {
  struct stat info {};
  ASSERT_EQ(stat(archive.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600U);
  EXPECT_EQ(zip.entryName(archive), name);
  EXPECT_TRUE(zip.isArchive(archive));
  EXPECT_FALSE(zip.isArchive(dir / name));
  EXPECT_TRUE(extracts());
  EXPECT_FALSE(extracts("WRONG"));
  EXPECT_FALSE(extracts("ZEPHOR", static_cast<long long>(content.size()) - 1));
}

TEST_F(ZipIndex, IsReadByOtherUnpackers) {
  const std::string quoted = "'" + archive + "'";
  ASSERT_EQ(run("unzip -P ZEPHOR -d '" + (dir / "unzipped") + "' " + quoted), 0);
  EXPECT_EQ(TempDir::read(dir / ("unzipped/" + name)), content);
  EXPECT_EQ(run("7z t -pZEPHOR " + quoted), 0);
  EXPECT_NE(run("7z t -pWRONG " + quoted), 0);
}

TEST_F(ZipIndex, DamagedArchivesFailWithoutLeavingAnything) {
  const std::string good = TempDir::read(archive);
  for (std::size_t at = 0; at < good.size(); at += at < 200 ? 1 : 397) {
    dir.write("index.zip", good.substr(0, at));
    EXPECT_FALSE(extracts()) << "cut at " << at;
    std::string changed = good;
    changed[at] = static_cast<char>(changed[at] ^ 0x41);
    dir.write("index.zip", changed);
    extracts();
    zip.entryName(archive);
  }
  dir.write("index.zip", good + good);
  extracts();
  EXPECT_NE(zip.compress(dir / "new.zip", dir / "missing", "ZEPHOR"), 0);
  EXPECT_FALSE(std::filesystem::exists(dir / "new.zip"));
}

}  // namespace
}  // namespace korvenal::test
