#include "ui/RecordTable.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace korvenal::ui {
namespace {

constexpr int Rows = 90'000;

/// A report of many rows, every tenth of them bad.
class RecordTableTest : public testing::Test {
 protected:
  RecordTableTest() {
    for (int i = 0; i < Rows; ++i) report.addRow({"name", i % 10 == 0 ? "bad" : "PASS"});
  }
  static NoteKind kindOf(const std::string& result) {
    return result == "bad" ? NoteKind::Bad : NoteKind::Good;
  }
  int shown() const { return view.model()->rowCount(); }
  void settle() {
    for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
  }

  Table report{{"File Name", "Result"}};
  RecordTable view{report, new RecordModel(report, {1, kindOf}), {}};
};

TEST_F(RecordTableTest, ManyRowsComeInByAndBy) {
  view.refresh();
  EXPECT_LT(shown(), Rows);
  settle();
  EXPECT_EQ(shown(), Rows);
  EXPECT_EQ(view.failures(), Rows / 10);

  report.addRow({"one more", "bad"}, true);
  report.addRow({"and one", "PASS"});
  view.refresh();
  EXPECT_EQ(shown(), Rows + 1) << "one is hidden";
  EXPECT_EQ(view.failures(), Rows / 10 + 1) << "but counts";

  for (int row = 1; row < report.Rows(); ++row)
    report.setRowHidden(row, report.text(row, 1) != "bad");
  view.refresh();
  settle();
  EXPECT_EQ(shown(), Rows / 10 + 1);
  EXPECT_EQ(view.model()->index(1, 0).data().toString(), QStringLiteral("name"));

  report.setRows(31'000);
  view.refresh();
  report.setText(2, 1, "bad");
  report.setRowHidden(2, false);
  view.refresh();
  settle();
  EXPECT_EQ(shown(), 3101);
  EXPECT_EQ(view.failures(), 3101);
  report.clearData();
  view.refresh();
  EXPECT_EQ(shown(), 0);
  EXPECT_EQ(view.failures(), 0);
}

}  // namespace
}  // namespace korvenal::ui
