#include <gtest/gtest.h>

#include <random>

#include "plan/ReferencePlan.h"

// Compares plans with those of an independent calculation, over random jobs whose sizes and names
// lie on the borders of the rules.

namespace korvenal::test {
namespace {

constexpr std::int64_t MiB = 1048576;
constexpr std::int64_t GiB = 1073741824;

class RandomJob {
 public:
  explicit RandomJob(unsigned seed) : random_(seed) {}

  void fill(ScanFixture& scan) {
    Job& job = scan.job;
    job.comboDiscType = pick(3);
    job.optSplitAndSpan = pick(2);
    job.optFileSystem = pick(2);
    job.optBackupType = pick(4) == 0;
    job.BurnBackupIndex = pick(3) > 0;
    job.BurnRestoreKit = pick(2) == 0;
    scan.settings.SplitSize = pick(13);
    scan.settings.SplitSize2 = pick(15);
    scan.settings.ExcludeTopFolder = pick(2) == 0;
    scan.settings.ExcludeEmptyFolder = pick(2) == 0;
    scan.plan.ScanMode = pick(4) == 0;
    scan.desktop.answerAllOk = true;
    if (pick(2) == 0)
      scan.files.addFile("/app/BIN/_RestoreKit_Installer.exe", 3 * MiB, 1'500'000'000);
    setSizes(scan);
    const int items = 1 + pick(3);
    for (int item = 0; item < items; ++item) addItem(scan, item);
    for (int i = 0; i < 40; ++i) scan.splitChoices.push_back(pick(8) == 0 ? 2 + pick(2) : pick(2));
  }

 private:
  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

  void setSizes(const ScanFixture& scan) {
    const std::int64_t capacity = discCapacity(scan.job.comboDiscType);
    const std::int64_t room = capacity - 16777216 - 4096;
    const std::int64_t threshold = SplitFileMegabytes[scan.settings.SplitSize] * MiB;
    const std::int64_t rest = SplitDiscMegabytes[scan.settings.SplitSize2] * MiB;
    borders_ = {0,
                1,
                threshold,
                room,
                room - 4096,
                room - rest,
                room - rest - 8192,
                GiB,
                2 * GiB,
                3 * GiB,
                5 * GiB,
                1084227584,
                GiB + 1084227584,
                2 * GiB + 1084227584,
                capacity - 4096,
                capacity,
                2 * room,
                room / 2};
    // Some jobs need more discs than there may be.
    if (pick(12) == 0) borders_.push_back(70 * capacity);
  }

  std::int64_t size() {
    if (pick(3) == 0) return std::uniform_int_distribution<std::int64_t>(0, 900 * MiB)(random_);
    static constexpr std::int64_t Steps[] = {0, 1, -1, 2048, -2048, 4096, -4096, -8192};
    const std::int64_t border =
        borders_[static_cast<std::size_t>(pick(static_cast<int>(borders_.size())))];
    return std::max<std::int64_t>(0, border + Steps[pick(8)]);
  }

  /// Short names, and long ones around the limit that hold each other.
  std::string name() {
    static const std::string Short[] = {"a", "b", "A", "ab", "x.iso", "d.e", "ü", "über lang.txt"};
    if (pick(3) > 0) return Short[pick(8)];
    static const std::string Units[] = {"q", "ä", "語", "😀"};
    const std::string& unit = Units[pick(4)];
    std::string longName;
    while (longName.size() + unit.size() <= static_cast<std::size_t>(104 + pick(6)))
      longName += unit;
    static const std::string Tails[] = {"", "1", ".jpeg", ".extension", "éèê"};
    const std::string tail = Tails[pick(5)];
    return pick(4) == 0 ? tail + longName : longName + tail;
  }

  std::vector<ListEntry> entries(int depth) {
    std::map<std::string, ListEntry> byName;
    const int count = pick(depth == 0 ? 8 : 5);
    for (int i = 0; i < count; ++i) {
      const std::string entryName = name();
      byName[entryName] = depth < 4 && pick(5) < 2 ? folder(entryName, entries(depth + 1), date())
                                                   : file(entryName, size(), date());
    }
    std::vector<ListEntry> result;
    for (auto& [key, entry] : byName) result.push_back(std::move(entry));
    return result;
  }

  UnixTime date() { return 1'000'000'000 + pick(700'000'000); }

  void addItem(ScanFixture& scan, int number) {
    const std::string path = "/s" + std::to_string(number) + "/source";
    // No job has two items of one name.
    if (number == 0) itemNames_.clear();
    std::string own = name();
    while (!itemNames_.insert(own).second) own = name();
    const ListEntry entry =
        pick(4) == 0 ? file(own, size(), date()) : folder(own, entries(0), date());
    scan.addItem(path, entry, pick(8) > 0);
    clearSomeBits(scan, entry, path);
  }

  void clearSomeBits(ScanFixture& scan, const ListEntry& entry, const std::string& path) {
    if (!entry.isFolder && pick(2) == 0) scan.bits.cleared.insert(path);
    for (const ListEntry& below : entry.entries)
      clearSomeBits(scan, below, path + "/" + below.name);
  }

  std::mt19937 random_;
  std::vector<std::int64_t> borders_;
  std::set<std::string> itemNames_;
};

std::string rowText(const ReferencePlan::Row& row) {
  std::string line;
  for (const std::string& cell : row) line += cell + "|";
  return line;
}

std::vector<std::string> rowTexts(const PlanTable& table) {
  std::vector<std::string> lines;
  for (int at = 1; at < table.Rows(); ++at) {
    ReferencePlan::Row row;
    for (int col = 0; col < PlanColumns; ++col)
      row[static_cast<std::size_t>(col)] = table.text(at, col);
    lines.push_back(rowText(row));
  }
  return lines;
}

void compare(const ScanFixture& scan, const ReferencePlan& expected) {
  std::vector<std::string> lines;
  for (const auto& row : expected.rows) lines.push_back(rowText(row));
  ASSERT_EQ(rowTexts(scan.plan.vsBuffer), lines);
  EXPECT_EQ(scan.state.LimitExceeded, expected.limitExceeded);
  EXPECT_EQ(scan.state.StopAction, expected.stopped || expected.limitExceeded);
  EXPECT_TRUE(scan.state.TaskDone);
  EXPECT_EQ(scan.plan.TotalSize, Fixed4(expected.totalSize));
  EXPECT_EQ(scan.plan.TotalDiscs, expected.totalDiscs);
  EXPECT_EQ(scan.plan.TotalFiles, expected.totalFiles);
  EXPECT_EQ(scan.plan.TotalSplits, expected.totalSplits);
  for (std::size_t disc = 0; disc < expected.discUsed.size(); ++disc)
    EXPECT_EQ(scan.plan.DiscUsed[disc], Fixed4(expected.discUsed[disc])) << disc;
  EXPECT_EQ(scan.plan.IndexSizePreliminary,
            Fixed4(static_cast<std::int64_t>(expected.preliminaryIndex.size())));
  if (lines.empty()) return;
  EXPECT_EQ(scan.plan.IndexOnDiscs, expected.indexOnDiscs);
  if (expected.finalIndex.empty()) return;
  EXPECT_EQ(scan.files.contents.at(scan.plan.IndexTempPath), expected.finalIndex);
}

TEST(PlanComparison, RandomJobsComeOutAsInTheIndependentCalculation) {
  int split = 0, several = 0, limited = 0;
  for (unsigned seed = 1; seed <= 2500; ++seed) {
    ScanFixture scan;
    RandomJob(seed).fill(scan);
    const std::deque<int> choices = scan.splitChoices;
    scan.scan();
    const ReferencePlan expected(scan, choices);
    compare(scan, expected);
    ASSERT_FALSE(::testing::Test::HasFailure()) << "job " << seed;
    split += expected.totalSplits > 0;
    several += expected.totalDiscs > 1;
    limited += expected.limitExceeded;
  }
  // The jobs reach what they are for.
  EXPECT_GT(split, 300);
  EXPECT_GT(several, 600);
  EXPECT_GT(limited, 5);
}

}  // namespace
}  // namespace korvenal::test
