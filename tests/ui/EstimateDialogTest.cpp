#include <QCheckBox>
#include <QLabel>
#include <QTableView>
#include <QtTest>
#include <fstream>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class EstimateDialogTest : public WindowFixture {
 protected:
  void makeFile(const std::string& name, std::size_t bytes) {
    std::ofstream(source + name, std::ios::binary) << std::string(bytes, 'x');
  }
};

TEST_F(EstimateDialogTest, WhatIsNotThereIsTold) {
  makeFile("notes.txt", 2048);
  doStart();
  program->doTask01();
  program->job.comboDiscType = 0;
  int folder = 0;
  program->addItems.doCreateItem(folder, "Photos", source.substr(0, source.size() - 1));
  program->addItems.doCreateItem(folder, "Disk", "/not/mounted");
  static_cast<MainWindow&>(window()).refresh();
  person.when("frmEstimateInfo", [](QWidget& report) {
    EXPECT_EQ(Person::find<QLabel>(report, "leftOut").text(),
              QStringLiteral("Not existing, not backed up: /not/mounted"));
    Person::press(report, "pbClose");
  });
  press("pbEstimate");
  EXPECT_TRUE(person.isDone());
}

TEST_F(EstimateDialogTest, TheEstimateIsToldAndItsReportShowsEveryDisc) {
  makeFile("notes.txt", 2048);
  doStart();
  program->doTask01();
  program->job.comboDiscType = 0;
  int folder = 0;
  program->addItems.doCreateItem(folder, "Photos", source.substr(0, source.size() - 1));
  static_cast<MainWindow&>(window()).refresh();
  EXPECT_FALSE(find("pbEstimateInfo").isVisible());

  person.when("frmEstimateInfo", [](QWidget& report) {
    auto& discs = Person::find<QTableView>(report, "vsDisc");
    ASSERT_EQ(discs.model()->rowCount(), 1);
    EXPECT_EQ(discs.model()->index(0, 1).data().toString(), QStringLiteral("Backup #1"));
    EXPECT_EQ(discs.currentIndex().row(), 0);
    auto& contents = Person::find<QTableView>(report, "vsDContents");
    QStringList notes, names;
    for (int row = 0; row < contents.model()->rowCount(); ++row) {
      names << contents.model()->index(row, 0).data().toString();
      notes << contents.model()->index(row, 3).data().toString();
    }
    EXPECT_TRUE(notes.contains(QStringLiteral("Backup Index")));
    EXPECT_TRUE(names.join(QLatin1Char(' ')).contains(QStringLiteral("notes.txt")));
    EXPECT_TRUE(contents.isColumnHidden(4));
    Person::press(report, "chkShowPath");
    EXPECT_FALSE(contents.isColumnHidden(4));
    Person::press(report, "chkShowInfo");
    Person::press(report, "pbClose");
  });
  press("pbEstimate");
  ASSERT_TRUE(person.isDone());
  const QString sentence = find<QLabel>("EstimateDisc").text();
  EXPECT_TRUE(sentence.startsWith(QStringLiteral("CD 700MB x 1  (Total:  ")))
      << sentence.toStdString();
  EXPECT_TRUE(find("pbEstimateInfo").isVisible());

  // Not opened by itself any more, and kept open on demand with the path as it was left.
  press("pbEstimate");
  person.when("frmEstimateInfo", [](QWidget& report) {
    EXPECT_TRUE(Person::find<QCheckBox>(report, "chkShowPath").isChecked());
    QTest::keyClick(&report, Qt::Key_Escape);
  });
  press("pbEstimateInfo");
  EXPECT_TRUE(person.isDone());

  press("BurnBackupIndex");
  EXPECT_EQ(find<QLabel>("EstimateDisc").text(), QString());
  EXPECT_FALSE(find("pbEstimateInfo").isVisible());
}

}  // namespace
}  // namespace korvenal::ui
