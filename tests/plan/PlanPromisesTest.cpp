#include <gtest/gtest.h>

#include "plan/BackupIndex.h"
#include "plan/PlanLimits.h"
#include "plan/ScanFixture.h"
#include "restore/IndexText.h"

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
  archive.fails = true;  // what is written stays plain
  plan.IndexTempPath = "/tmp/index";
  auto& rows = plan.vsBuffer.rows();
  PlanTable::Row row;
  row.type = RowType::File;
  row.folder = PlanTable::DiscRoot;
  row.name = row.original = plan.vsBuffer.addText("f");
  rows.resize(static_cast<std::size_t>(MaxIndexLines) + 1, row);  // two rows are no lines
  const BackupIndex::Header header{"Job", "", 0};
  EXPECT_GT(index.doWriteBackupIndex(plan, &header), Fixed4());
  IndexText text;
  EXPECT_TRUE(text.load(files.contents.at(plan.IndexTempPath)));
  EXPECT_EQ(text.rows(), MaxIndexLines);

  rows.push_back(row);
  EXPECT_EQ(index.doWriteBackupIndex(plan, &header), Fixed4());
  EXPECT_FALSE(files.contents.contains(plan.IndexTempPath));
}

}  // namespace
}  // namespace korvenal::test
