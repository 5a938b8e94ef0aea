#include <QCheckBox>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>
#include <filesystem>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class RunViewTest : public WindowFixture {
 protected:
  /// Two files of which a CD takes one: the backup needs two discs.
  void doPrepareTwoDiscs() {
    for (const char* name : {"first.bin", "second.bin"}) {
      temp.write(std::string("source/") + name, "");
      std::filesystem::resize_file(source + name, 400'000'000);
    }
    doStart();
    static_cast<MainWindow&>(window()).act([this] {
      program->doTask01();
      program->jobControls.setDiscType(0);
      program->job.optSplitAndSpan = 0;
      program->addItems.doDropItems({temp.path() + "source"});
      program->job.doMarkChanged(false);
    });
    press("PBNext0");
  }
  QTableView& table(const std::string& name) { return find<QTableView>(name); }
  QString cell(const std::string& name, int row, int column) {
    return table(name).model()->index(row, column).data().toString();
  }
  /// What is told of a disc beside its bar.
  QString disc(int number) { return find("disc" + std::to_string(number)).accessibleDescription(); }
  QString tab(int index) { return find<QTabWidget>("RunTab0").tabText(index); }
  void openRow(const std::string& name, int row) {
    QTableView& view = table(name);
    const QPoint place = view.visualRect(view.model()->index(row, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
  }
};

TEST_F(RunViewTest, AStoppedBackupGoesOnAtTheDiscWhereItEndedAndShowsItsReports) {
  doPrepareTwoDiscs();
  person.answers("frmLoadDisc", "pbOK");
  person.when("frmLoadDisc", [this](QWidget& prompt) {
    EXPECT_EQ(disc(1), QStringLiteral("verified, 0 errors"));
    EXPECT_TRUE(disc(2).endsWith(QStringLiteral(" MB"))) << disc(2).toStdString();
    Person::press(prompt, "pbStop");
  });
  press("PBNext0");
  EXPECT_EQ(program->backupResult.end, BackupResult::End::Stopped) << events(0);
  EXPECT_EQ(disc(1), QStringLiteral("verified, 0 errors"));

  person.answers("frmLoadDisc", "pbOK");
  press("PBNext0");
  ASSERT_EQ(program->backupResult.end, BackupResult::End::Finished) << events(0);
  EXPECT_EQ(disc(2), QStringLiteral("verified, 0 errors"));
  ASSERT_EQ(table("vsOutput0").model()->rowCount(), 2);

  find<QTabWidget>("RunTab0").setCurrentIndex(1);
  openRow("vsOutput0", 0);
  EXPECT_EQ(tab(2), QStringLiteral("&Verify Report - Backup #1"));
  EXPECT_TRUE(table("vsError0").isVisible());
  EXPECT_EQ(cell("vsError0", 0, 2), QStringLiteral("Backup Index"));
  EXPECT_EQ(cell("vsError0", 1, 0), QStringLiteral("first.bin"));
  press("OnlyShowErrorFile");
  EXPECT_EQ(table("vsError0").model()->rowCount(), 0);
}

TEST_F(RunViewTest, AFileThatFailedIsSeenOnTheTabAndTheDisc) {
  temp.write("source/good.txt", "good");
  temp.write("source/gone.txt", "gone");
  doStart();
  static_cast<MainWindow&>(window()).act([this] {
    program->doTask01();
    program->addItems.doDropItems({temp.path() + "source"});
    program->job.doMarkChanged(false);
  });
  press("PBNext0");
  person.when("frmLoadDisc", [this](QWidget&) { std::filesystem::remove(source + "gone.txt"); });
  person.answers("frmLoadDisc", "pbOK");
  press("PBNext0");
  EXPECT_EQ(disc(1), QStringLiteral("1 backup file error."));
  EXPECT_EQ(tab(1), QStringLiteral("&Disc Record (1)"));
  EXPECT_TRUE(tab(2).endsWith(QStringLiteral("(1)"))) << tab(2).toStdString();
  find<QTabWidget>("RunTab0").setCurrentIndex(2);
  press("OnlyShowErrorFile");
  ASSERT_EQ(table("vsError0").model()->rowCount(), 1);
  EXPECT_EQ(cell("vsError0", 0, 1), QStringLiteral("Source not found"));
}

}  // namespace
}  // namespace korvenal::ui
