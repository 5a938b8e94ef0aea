#include "core/RunGrids.h"

#include <gtest/gtest.h>

#include "core/TableExport.h"
#include "support/Workbench.h"

namespace korvenal::test {

class RunGridsTest : public testing::Test {
 protected:
  EventStyle lastStyle() const { return grids_.styleOf(0, grids_.vsEvent[0].Rows() - 1); }
  const std::string& lastText() const {
    return grids_.vsEvent[0].text(grids_.vsEvent[0].Rows() - 1, 1);
  }
  void addReportRow(const std::string& name, const std::string& result) {
    grids_.vsError[0].addRow({name, result, "/source/" + name});
  }

  Workbench bench_;
  RunGrids& grids_ = bench_.grids;
};

TEST_F(RunGridsTest, MarksAreCutOffAndGiveTheStyle) {
  struct Case {
    const char* message;
    const char* text;
    EventStyle::Color color;
    EventStyle::Background background;
  };
  using Color = EventStyle::Color;
  using Background = EventStyle::Background;
  const Case cases[] = {
      {"*No disc.", "No disc.", Color::Red, Background::None},
      {"$Ready", "Ready", Color::Blue, Background::None},
      {"?Total", "Total", Color::Normal, Background::Orange},
      {"%Detail", "Detail", Color::Normal, Background::None},
      {"Plain * text", "Plain * text", Color::Normal, Background::None},
      {"*", "", Color::Red, Background::None},
  };
  for (const Case& one : cases) {
    grids_.doEventMessage(one.message);
    EXPECT_EQ(lastText(), one.text);
    EXPECT_EQ(lastStyle().color, one.color) << one.message;
    EXPECT_EQ(lastStyle().background, one.background) << one.message;
  }
  EXPECT_EQ(bench_.desktop.yields, 6) << "every message gives the stop button a chance";
}

TEST_F(RunGridsTest, ShadesAndPagesAndBlankMessages) {
  grids_.doEventMessage("  \t ");
  EXPECT_FALSE(grids_.vsEvent[0].hasData());
  bench_.state.DiscInWork = true;
  grids_.doEventMessage("burning");
  EXPECT_EQ(lastStyle().background, EventStyle::Background::Green);
  grids_.doEventMessage("?summary", true);
  EXPECT_EQ(lastStyle().background, EventStyle::Background::Yellow);
  bench_.state.ActionPage = 2;
  grids_.doEventMessage("elsewhere");
  EXPECT_EQ(grids_.vsEvent[0].Rows(), 3);
  EXPECT_EQ(grids_.vsEvent[2].Rows(), 2);

  grids_.clearPage(0);
  EXPECT_EQ(grids_.vsEvent[0].Rows(), 1);
  grids_.doEventMessage("back on 2");
  bench_.state.ActionPage = 0;
  bench_.state.DiscInWork = false;
  grids_.doEventMessage("new");
  EXPECT_EQ(lastStyle().background, EventStyle::Background::None) << "no style of before";
}

TEST_F(RunGridsTest, ReportsComeBackFromTheirFiles) {
  grids_.vsOutput[0].addRow({"V:", "", "", "Backup", "Job", "Backup #1", "CD-R", "Success."});
  addReportRow("a.txt", "PASS");
  addReportRow("tab\tname.txt", "Size not match");
  addReportRow("b.txt", "pass");
  grids_.doSaveDiscReport(1);
  grids_.vsError[0].clearData();
  grids_.OnlyShowErrorFile = true;
  grids_.doShowDiscReport(1);
  const Table& report = grids_.vsError[0];
  ASSERT_EQ(report.Rows(), 4);
  EXPECT_EQ(report.text(2, 0), "tab\tname.txt");
  EXPECT_TRUE(report.isRowHidden(1));
  EXPECT_FALSE(report.isRowHidden(2));
  EXPECT_TRUE(report.isRowHidden(3));
  EXPECT_EQ(grids_.PBErrorList[0], "&Verify Report - Backup #1");

  const std::string path = bench_.workspace.TempFolder + "report.txt";
  bench_.desktop.files = {path};
  EXPECT_TRUE(doExportGrid(bench_.desktop, bench_.files, report));
  EXPECT_EQ(bench_.files.readAll(path, 1000),
            "File Name\tResult\tSource Path\n"
            "tab name.txt\tSize not match\t/source/tab name.txt\n");
  grids_.OnlyShowErrorFile = false;
  grids_.doFilterReport();
  EXPECT_FALSE(report.isRowHidden(1));

  grids_.doShowDiscReport(2);
  EXPECT_FALSE(report.hasData()) << "a missing report is an empty one";
}

TEST_F(RunGridsTest, AReportOfManyRowsLetsTheFrontEndWorkAndNothingElseBegin) {
  const std::string name(200, 'n');
  Table& report = grids_.vsError[0];
  for (int i = 0; i < 30'000; ++i)
    addReportRow(name + std::to_string(i), i % 7 == 3 ? "no" : "PASS");
  const std::string whole = report.saveData();
  bench_.desktop.onYield = [this](int) { EXPECT_TRUE(bench_.state.ActionRunning); };
  const auto yieldsOf = [this](const std::function<void()>& work) {
    bench_.desktop.yields = 0;
    work();
    return bench_.desktop.yields;
  };
  EXPECT_GT(yieldsOf([this] { grids_.doSaveDiscReport(1); }), 2);
  EXPECT_GT(yieldsOf([this] { grids_.doClearReport(); }), 2);
  EXPECT_GT(yieldsOf([this] { grids_.doShowDiscReport(1); }), 2);
  EXPECT_TRUE(report.saveData() == whole);
  grids_.OnlyShowErrorFile = true;
  EXPECT_GT(yieldsOf([this] { grids_.doFilterReport(); }), 2);
  EXPECT_TRUE(report.isRowHidden(3));
  EXPECT_FALSE(report.isRowHidden(4));
  EXPECT_FALSE(bench_.state.ActionRunning);

  const std::string path = bench_.workspace.runLog(1);
  bench_.files.writeAll(path, whole + "bad\\");
  grids_.doShowDiscReport(1);
  EXPECT_FALSE(report.hasData()) << "half a report would be taken for all of it";
}

TEST_F(RunGridsTest, PrintsBearTheirTitleAndTodaysDate) {
  Table table({"Drive"});
  doPrintGrid(bench_.desktop, bench_.clock, table, "Disc Record");
  EXPECT_TRUE(bench_.desktop.printed.empty()) << "a table without data";
  table.addRow({"V:"});
  doPrintGrid(bench_.desktop, bench_.clock, table, "Disc Record");
  EXPECT_THAT(bench_.desktop.printed,
              testing::ElementsAre("Disc Record - " +
                                   Dates::displayShort(bench_.clock.time).substr(0, 10)));
}

}  // namespace korvenal::test
