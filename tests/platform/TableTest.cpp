#include "platform/Table.h"

#include <gtest/gtest.h>

namespace korvenal {

TEST(Table, RowsMoveAsWholesAndTheHeaderStays) {
  Table table({"Name", "Size"});
  for (const char* name : {"a", "b", "c", "d"}) table.addRow({name});
  table.setCheck(1, 1, Table::Check::Ticked);
  table.setCellData(1, 0, "hidden a");
  table.setRowHidden(1, true);

  table.moveRow(1, 3);
  EXPECT_EQ(table.text(1, 0) + table.text(2, 0) + table.text(3, 0) + table.text(4, 0), "bcad");
  EXPECT_EQ(table.check(3, 1), Table::Check::Ticked);
  EXPECT_EQ(table.cellData(3, 0), "hidden a");
  EXPECT_TRUE(table.isRowHidden(3));

  table.moveRow(4, 1);
  EXPECT_EQ(table.text(1, 0) + table.text(2, 0) + table.text(3, 0) + table.text(4, 0), "dbca");
  table.moveRow(2, 0);
  table.insertRow(0, {"new"});
  table.removeRow(0);
  EXPECT_EQ(table.text(0, 0), "Name");
  EXPECT_EQ(table.text(1, 0), "new");
  EXPECT_EQ(table.text(2, 0), "b");
}

TEST(Table, DataSurvivesSaveAndLoad) {
  Table table({"tab\there", "line\r\nbreak", ""});
  table.addRow({"back\\slash", "\\t is no tab", "\xC3\xA4\xFF"});
  table.addRow({});
  table.addRow({"", "", "last"});
  table.setCheck(1, 2, Table::Check::Ticked);
  table.setCheck(3, 0, Table::Check::Unticked);

  for (const bool withChecks : {false, true}) {
    Table loaded;
    ASSERT_TRUE(loaded.loadData(table.saveData(withChecks), withChecks));
    ASSERT_EQ(loaded.Rows(), table.Rows());
    ASSERT_EQ(loaded.Cols(), table.Cols());
    for (int row = 0; row < table.Rows(); ++row)
      for (int col = 0; col < table.Cols(); ++col) {
        EXPECT_EQ(loaded.text(row, col), table.text(row, col));
        EXPECT_EQ(loaded.check(row, col), withChecks ? table.check(row, col) : Table::Check::None);
      }
  }
}

TEST(Table, MalformedDataLeavesOneRowWithoutTexts) {
  const std::string wide(5000, '\t');
  for (const std::string& data : std::vector<std::string>{
           "", "a\\", "a\\x", "a\rb\n", "a\tb\t0\n", "a\tb\t03\n", "no checks\n", wide + "00\n"}) {
    Table table({"Header"});
    table.addRow({"old"});
    EXPECT_FALSE(table.loadData(data, true)) << data.substr(0, 20);
    EXPECT_EQ(table.Rows(), 1);
    EXPECT_EQ(table.text(0, 0), "");
  }
  Table table;
  EXPECT_TRUE(table.loadData("h\n1\n2\n", false, 3));
  EXPECT_FALSE(table.appendData("3\n", false, 3));
  EXPECT_FALSE(table.appendData("3\n4\\\n"));
  EXPECT_EQ(table.saveData(), "h\n1\n2\n") << "nothing of what is malformed";
  const std::uint64_t settled = table.settledRevision();
  EXPECT_TRUE(table.appendData("3\n", false, 4));
  table.addRow({"4"}, true);
  EXPECT_EQ(table.saveData(), "h\n1\n2\n3\n4\n");
  EXPECT_EQ(table.settledRevision(), settled) << "rows at the end change nothing of before";
  table.setRowHidden(4, false);
  EXPECT_NE(table.settledRevision(), settled) << "hidden since it was added";
  EXPECT_TRUE(table.appendData("5\twide\n"));
  EXPECT_EQ(table.Cols(), 2);
  table = Table({"h"});
  EXPECT_FALSE(table.loadData("h\n1\n2\n3\n", false, 3));
}

}  // namespace korvenal
