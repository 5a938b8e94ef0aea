#include <gtest/gtest.h>

#include "plan/BackupIndex.h"
#include "plan/ScanFixture.h"
#include "restore/IndexText.h"
#include "restore/RestoreTree.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;

class PlanPromises : public testing::Test, public ScanFixture {};

TEST_F(PlanPromises, NoTwoItemsGetOneDiscPath) {
  addItem("/s/first", folder("Doc", {file("a", 1), file("A", 2)}));
  addItem("/t/second", folder("Doc", {file("a", 4), file("b", 8)}));
  addItem("/u/third", file("DOC", 16));
  addItem("/v/fourth", file("DOC", 32));
  job.BurnBackupIndex = false;
  scan();
  EXPECT_THAT(column(PlanName), ElementsAre("Doc\\", "Doc\\a", "Doc\\A", "DOC"));
  EXPECT_EQ(plan.TotalSize, Fixed4(19));
  EXPECT_THAT(plan.skippedNotes,
              ElementsAre("Another item has its name on disc, not backed up:  /t/second",
                          "Another item has its name on disc, not backed up:  /v/fourth"));
  EXPECT_EQ(plan.missed, 2);
}

TEST_F(PlanPromises, AnIndexThatIsWrittenCanBeRead) {
  BackupIndex index(files, archive, desktop, state);
  EXPECT_EQ(index.mostLines, IndexText::MaxLines);
  EXPECT_EQ(index.mostBytes, RestoreTree::MaxTextBytes);

  for (const char* name : {"a", "b", "c"}) addItem(std::string("/s/") + name, file(name, 1));
  scan();
  archive.fails = true;  // what is written stays plain
  const BackupIndex::Header header{"Job", ""};
  ASSERT_GT(index.doWriteBackupIndex(plan, &header), Fixed4());
  const std::string whole = files.contents.at(plan.IndexTempPath);
  IndexText text;
  ASSERT_TRUE(text.load(whole));

  const auto isWritten = [&](int lines, std::int64_t bytes) {
    index.mostLines = lines;
    index.mostBytes = bytes;
    return index.doWriteBackupIndex(plan, &header) != Fixed4();
  };
  EXPECT_TRUE(isWritten(text.rows(), std::ssize(whole)));
  EXPECT_FALSE(isWritten(text.rows() - 1, std::ssize(whole)));
  EXPECT_FALSE(isWritten(text.rows(), std::ssize(whole) - 1));
  EXPECT_FALSE(files.contents.contains(plan.IndexTempPath)) << "half of it would pass for all";
}

}  // namespace
}  // namespace korvenal::test
