#include <QAction>
#include <QCheckBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMenu>
#include <QPdfWriter>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

#include "ui/TablePrinter.h"
#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class RecordsTest : public WindowFixture {
 protected:
  QTableView& recent() { return find<QTableView>("vsRecent"); }
  /// Opens the menu of the recent backups and takes an item.
  void choose(const std::string& item) {
    emit find<QToolButton>("pbRecent").menu()->aboutToShow();
    find<QAction>(item).trigger();
  }
  void doAddRecent(const std::string& job, const std::string& note, const std::string& file) {
    program->records.doAddRecent(
        {"2026-11-22 10:00", job, "1204", "5.1 GB", "DVD 4.7GB", "2", note, file});
    static_cast<MainWindow&>(window()).refresh();
  }
};

TEST_F(RecordsTest, RecentBackupsAreExportedDeletedAndCleared) {
  doStart();
  EXPECT_FALSE(find<QAction>("pbRecent_4").isEnabled());
  doAddRecent("Photos", "Full backup.", "");
  doAddRecent("Music", "* Uncompleted.", "");
  EXPECT_TRUE(recent().isColumnHidden(7));
  const auto note = [this](int row) { return recent().model()->index(row, 6); };
  EXPECT_TRUE(note(0).data(Qt::ForegroundRole).isValid());
  EXPECT_FALSE(note(1).data(Qt::ForegroundRole).isValid());

  const std::string path = temp.path() + "/recent.txt";
  person.when("QFileDialog", [path](QWidget& dialog) {
    Person::find<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(path));
    Person::press(dialog, "Save");
  });
  choose("pbRecent_5");
  EXPECT_EQ(test::TempDir::read(path),
            "Last Run Time\tBackup Job\tFiles\tSize\tDisc Type\tDisc\tNote\n"
            "2026-11-22 10:00\tMusic\t1204\t5.1 GB\tDVD 4.7GB\t2\t* Uncompleted.\n"
            "2026-11-22 10:00\tPhotos\t1204\t5.1 GB\tDVD 4.7GB\t2\tFull backup.\n");

  recent().setCurrentIndex(recent().model()->index(0, 0));
  choose("pbRecent_2");
  ASSERT_EQ(recent().model()->rowCount(), 1);
  EXPECT_EQ(recent().model()->index(0, 1).data().toString(), QStringLiteral("Photos"));
  person.answers("messageBox", "No");
  choose("pbRecent_3");
  EXPECT_EQ(recent().model()->rowCount(), 1);
  person.answers("messageBox", "Yes");
  choose("pbRecent_3");
  EXPECT_EQ(recent().model()->rowCount(), 0);
  EXPECT_FALSE(find<QAction>("pbRecent_4").isEnabled());
}

TEST_F(RecordsTest, ADoubleClickOpensTheJobOfABackup) {
  temp.write("source/notes.txt", "text");
  const std::string file = temp / "Holidays.jbf";
  doStart();
  auto& main = static_cast<MainWindow&>(window());
  main.act([this] {
    program->doTask01();
    program->addItems.doDropItems({source + "notes.txt"});
  });
  person.when("QFileDialog", [file](QWidget& dialog) {
    Person::find<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(file));
    Person::press(dialog, "Save");
  });
  press("PBSaveJob");
  press("PBSTART0");
  doAddRecent("Gone", "Full backup.", temp / "gone.jbf");
  doAddRecent("Holidays", "Full backup.", file);
  const auto doubleClick = [this](int row) {
    const QPoint place = recent().visualRect(recent().model()->index(row, 1)).center();
    QTest::mouseClick(recent().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(recent().viewport(), Qt::LeftButton, {}, place);
  };
  doubleClick(1);
  EXPECT_TRUE(recent().isVisible()) << "there is no such job any more";
  doubleClick(0);
  ASSERT_FALSE(recent().isVisible());
  EXPECT_EQ(find<QLineEdit>("txJobName").text(), QStringLiteral("Holidays"));
  auto& items = find<QTableView>("vsContents");
  ASSERT_EQ(items.model()->rowCount(), 1);
  EXPECT_EQ(items.model()->index(0, ContentsName).data().toString(), QStringLiteral("notes.txt"));
}

TEST_F(RecordsTest, ThePreviewOfARecordOpensAndCloses) {
  doStart();
  doAddRecent("Photos", "Full backup.", "");
  person.when("printPreview", [](QWidget& dialog) {
    const auto* pages = dialog.findChild<QGraphicsView*>();
    ASSERT_NE(pages, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([pages] { return pages->scene()->items().size() == 1; }));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  choose("pbRecent_4");
  EXPECT_TRUE(person.isDone());
  EXPECT_TRUE(recent().isVisible());
}

TEST_F(RecordsTest, EraseLeavesARecordOfEveryDisc) {
  doStart();
  press("TASK04");
  EXPECT_TRUE(find("EraseMode").isVisible());
  press("optEraseMode1");
  EXPECT_NE(events(2).find("Full - Up to 40 minutes each disc."), std::string::npos);
  press("optEraseMode0");
  person.when("frmLoadDisc", [this](QWidget&) {
    platform->ports(*desktop).trays.insertBlank('V', DiscCdRw, "old", 0);
  });
  person.answers("frmLoadDisc", "pbOK");
  person.answers("frmLoadDisc", "pbStop");
  press("PBNext2");
  EXPECT_EQ(program->eraseResult.erased, 1) << events(2);
  press("PBSTART2");
  auto& log = find<QTableView>("vsLog");
  ASSERT_EQ(log.model()->rowCount(), 1);
  EXPECT_EQ(log.model()->index(0, 1).data().toString(), QStringLiteral("Quick-erase"));
  EXPECT_EQ(log.model()->index(0, 7).data().toString(), QStringLiteral("Success."));
}

TEST_F(RecordsTest, TheOptionsOutlastTheProgram) {
  doStart();
  EXPECT_FALSE(find("OPChk1").isEnabled()) << "no tray";
  press("OPChk0");
  doEnd();
  tray.present = true;
  doStart();
  EXPECT_FALSE(find<QCheckBox>("OPChk0").isChecked());
  EXPECT_TRUE(find("OPChk1").isEnabled());
}

TEST_F(RecordsTest, ALongTablePrintsPageByPageWhileTheWindowLives) {
  Table table({"File Name", "Result", "Source Path"});
  for (int row = 0; row < 5000; ++row)
    table.addRow({"file" + std::to_string(row), "PASS", std::string(200, 'x')});
  int turns = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&turns] { ++turns; });
  timer.start(0);
  const std::string file = temp.path() + "/table.pdf";
  QPdfWriter printer(QString::fromStdString(file));
  EXPECT_TRUE(paintTable(table, QStringLiteral("Verify Report"), printer, nullptr));
  EXPECT_GT(turns, 0);
  const std::string pdf = test::TempDir::read(file);
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  std::size_t pages = 0;
  for (auto at = pdf.find("/Type /Page\n"); at != std::string::npos;
       at = pdf.find("/Type /Page\n", at + 1))
    ++pages;
  EXPECT_GT(pages, 50U);
}

}  // namespace
}  // namespace korvenal::ui
