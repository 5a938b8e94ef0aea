#include <gtest/gtest.h>
#include <sqlite3.h>

#include "platform/linux/SqliteArchiveBits.h"
#include "support/TempDir.h"

namespace korvenal {

namespace {

FileInfo someFile() {
  FileInfo info;
  info.kind = FileInfo::Kind::File;
  info.size = Fixed4(1234);
  info.modified = 1'700'000'000;
  info.modifiedNanoseconds = 5;
  info.changed = 1'700'000'001;
  info.changedNanoseconds = 6;
  info.inode = 0xFFFF'FFFF'FFFF'FFFF;
  return info;
}

}  // namespace

class ArchiveBitsTest : public testing::Test {
 protected:
  test::TempDir folder_;
  std::string store_ = folder_ / "bits.db";
  const std::string path_ = "/home/ann/\xFF odd \xC3\xA4";
};

TEST_F(ArchiveBitsTest, AClearedBitHoldsUntilAnythingOfTheFileChanges) {
  {
    SqliteArchiveBits bits(store_);
    EXPECT_TRUE(bits.doHasArchiveBit(path_, someFile()));
    bits.doClearArchiveBit(path_, someFile());
  }
  SqliteArchiveBits bits(store_);
  EXPECT_FALSE(bits.doHasArchiveBit(path_, someFile()));
  EXPECT_TRUE(bits.doHasArchiveBit(path_ + "x", someFile()));

  const std::function<void(FileInfo&)> changes[] = {
      [](FileInfo& info) { info.size = Fixed4(1235); },   [](FileInfo& info) { --info.modified; },
      [](FileInfo& info) { ++info.modifiedNanoseconds; }, [](FileInfo& info) { ++info.changed; },
      [](FileInfo& info) { --info.changedNanoseconds; },  [](FileInfo& info) { info.inode = 7; },
  };
  for (const auto& change : changes) {
    FileInfo changed = someFile();
    change(changed);
    EXPECT_TRUE(bits.doHasArchiveBit(path_, changed));
    bits.doClearArchiveBit(path_, changed);
    EXPECT_FALSE(bits.doHasArchiveBit(path_, changed));
    EXPECT_TRUE(bits.doHasArchiveBit(path_, someFile()));
    bits.doClearArchiveBit(path_, someFile());
  }
}

TEST_F(ArchiveBitsTest, RowsFromBeforeHoldWithoutAChangeTimeUntilTheyAreWrittenAnew) {
  sqlite3* older = nullptr;
  ASSERT_EQ(sqlite3_open(store_.c_str(), &older), SQLITE_OK);
  EXPECT_EQ(
      sqlite3_exec(older,
                   "CREATE TABLE saved (path BLOB PRIMARY KEY, size INTEGER, seconds INTEGER, "
                   "nanoseconds INTEGER, inode INTEGER) WITHOUT ROWID; "
                   "INSERT INTO saved VALUES (CAST('/a' AS BLOB), 1234, 1700000000, 5, -1); "
                   "PRAGMA user_version = 1",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(older);
  FileInfo touched = someFile();
  ++touched.changed;
  FileInfo rewritten = someFile();
  ++rewritten.modifiedNanoseconds;
  for (int start = 1; start <= 2; ++start) {
    SqliteArchiveBits bits(store_);
    EXPECT_FALSE(bits.doHasArchiveBit("/a", someFile())) << start;
    EXPECT_FALSE(bits.doHasArchiveBit("/a", touched)) << start;
    EXPECT_TRUE(bits.doHasArchiveBit("/a", rewritten)) << start;
  }
  SqliteArchiveBits bits(store_);
  bits.doClearArchiveBit("/a", someFile());
  EXPECT_TRUE(bits.doHasArchiveBit("/a", touched));
}

TEST_F(ArchiveBitsTest, WhatIsNotCommittedLeavesTheBitSet) {
  {
    SqliteArchiveBits bits(store_);
    bits.begin();
    bits.doClearArchiveBit(path_, someFile());
    bits.commit();
    bits.begin();
    bits.doClearArchiveBit("/lost", someFile());
  }
  SqliteArchiveBits bits(store_);
  EXPECT_FALSE(bits.doHasArchiveBit(path_, someFile()));
  EXPECT_TRUE(bits.doHasArchiveBit("/lost", someFile()));
}

TEST_F(ArchiveBitsTest, ADamagedStoreMeansAllBitsSetAndIsMadeAnew) {
  std::string whole;
  {
    SqliteArchiveBits bits(store_);
    bits.begin();
    for (int i = 0; i < 500; ++i) bits.doClearArchiveBit(path_ + std::to_string(i), someFile());
    bits.commit();
    whole = test::TempDir::read(store_);
  }
  std::string torn = whole;
  torn.replace(4096, torn.size() - 4096, torn.size() - 4096, '\x55');
  for (const std::string& damaged :
       {std::string(10'000, 'x'), torn, whole.substr(0, 5000), std::string("SQLite format 3")}) {
    folder_.write("bits.db", damaged);
    SqliteArchiveBits bits(store_);
    bits.begin();
    EXPECT_TRUE(bits.doHasArchiveBit(path_ + "1", someFile()));
    bits.doClearArchiveBit(path_, someFile());
    bits.commit();
    EXPECT_FALSE(bits.doHasArchiveBit(path_, someFile()));
  }
}

TEST_F(ArchiveBitsTest, AStoreThatCannotBeMadeMeansAllBitsSet) {
  SqliteArchiveBits bits(folder_ / "missing/bits.db");
  bits.begin();
  bits.doClearArchiveBit(path_, someFile());
  bits.commit();
  EXPECT_TRUE(bits.doHasArchiveBit(path_, someFile()));
}

}  // namespace korvenal
