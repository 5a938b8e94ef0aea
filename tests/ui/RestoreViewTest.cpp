#include <QAction>
#include <QCheckBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <QToolTip>
#include <QtTest>
#include <filesystem>
#include <fstream>

#include "restore/IndexLines.h"
#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

using test::IndexLines;

constexpr const char* LongName =
    "A very long name of a picture that does not fit into the column of names by far, so that it "
    "is cut in its middle, however wide the window may be on the screen of whoever looks.jpg";

/// The restore page with an index opened from a file.
class RestoreViewTest : public WindowFixture {
 protected:
  static IndexLines photos() {
    IndexLines lines;
    lines.folder("Photos").folder("Photos\\Sea").file("Photos\\Sea\\beach.jpg", 2048);
    lines.file("Photos\\Sea\\boat.jpg", 4096).folder("Photos\\Hills");
    lines.file(std::string("Photos\\Hills\\") + LongName, 1024).file("notes.txt", 100);
    return lines;
  }

  void doOpenIndex(const IndexLines& lines, const std::string& selectAll) {
    const std::string path = temp.path() + "/KORVEN{Photos(2026-11-22-10-00-F)}.bdx";
    std::ofstream(path, std::ios::binary) << lines.text();
    set("Restore", "Target", target);
    doStart();
    program->doTask02();
    static_cast<MainWindow&>(window()).refresh();
    person.when("QFileDialog", [path](QWidget& dialog) {
      // Typing would bring up the list of names, which takes the next key.
      Person::find<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(path));
      Person::press(dialog, "Open");
    });
    person.answers("messageBox", selectAll);
    press("openIndexFile");
    ASSERT_TRUE(person.isDone());
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  }

  QTableView& tree() { return find<QTableView>("vsRestore"); }
  QString text(const char* label) { return find<QLabel>(label).text(); }
  QModelIndex row(const QString& name) {
    const QAbstractItemModel& model = *tree().model();
    for (int at = 0; at < model.rowCount(); ++at)
      if (model.index(at, 0).data().toString() == name) return model.index(at, 0);
    ADD_FAILURE() << name.toStdString() << " is not in view.";
    return {};
  }
  /// The names in view with their boxes: "x" ticked, "-" partly, "." not.
  std::string inView() {
    std::string all;
    const QAbstractItemModel& model = *tree().model();
    for (int at = 0; at < model.rowCount(); ++at) {
      const QModelIndex index = model.index(at, 0);
      all += (at > 0 ? " " : "") + std::string(1, ".-x"[index.data(Qt::CheckStateRole).toInt()]) +
             index.data().toString().left(5).toStdString();
    }
    return all;
  }
  QString current() { return tree().currentIndex().siblingAtColumn(0).data().toString(); }
  enum Part : int { Arrow = 0, Box = 1 };
  /// Clicks a part of a row that stands at this level.
  void click(const QString& name, int level, Part part) {
    const QRect cell = tree().visualRect(row(name));
    const int step = tree().fontMetrics().height();
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {},
                      {cell.left() + (level + part) * step + step / 2, cell.center().y()});
  }
  void key(Qt::Key key) { QTest::keyClick(&tree(), key); }
};

TEST_F(RestoreViewTest, BoxesTakeTheirFoldersAlongAndTheTotalFollows) {
  doOpenIndex(photos(), "No");
  EXPECT_EQ(text("vsBackupIndex"), QStringLiteral("Backup index of \"Photos\""));
  EXPECT_TRUE(text("vsBackupInfo1").contains(QStringLiteral("2026-11-22 10:00")));
  EXPECT_EQ(text("vsBackupInfo2"), QStringLiteral("Restore selected:  0 file, 0 KB."));

  click(QStringLiteral("boat.jpg"), 2, Box);
  EXPECT_EQ(inView(), "-Photo -Sea .beach xboat. .Hills .A ver .notes");
  click(QStringLiteral("beach.jpg"), 2, Box);
  EXPECT_EQ(inView(), "-Photo xSea xbeach xboat. .Hills .A ver .notes");
  EXPECT_EQ(text("vsBackupInfo2"), QStringLiteral("Restore selected:  2 files, 6 KB."));
  click(QStringLiteral("Photos"), 0, Box);
  EXPECT_EQ(inView(), "xPhoto xSea xbeach xboat. xHills xA ver .notes");
  press("pbInvertSelection");
  EXPECT_EQ(inView(), ".Photo .Sea .beach .boat. .Hills .A ver xnotes");
  tree().setFocus();
  key(Qt::Key_Home);
  key(Qt::Key_Space);
  EXPECT_EQ(text("vsBackupInfo2"), QStringLiteral("Restore selected:  4 files, 8 KB."));
  press("pbSelectALL");
  key(Qt::Key_Space);
  EXPECT_EQ(inView(), ".Photo .Sea .beach .boat. .Hills .A ver xnotes");
}

TEST_F(RestoreViewTest, FoldersOpenAndCloseByArrowsKeysAndButtons) {
  doOpenIndex(photos(), "Yes");
  click(QStringLiteral("Sea"), 1, Arrow);
  EXPECT_EQ(inView(), "xPhoto xSea xHills xA ver xnotes");
  press("pbCollapse");
  EXPECT_EQ(inView(), "xPhoto xnotes");
  EXPECT_TRUE(tree().hasFocus());
  key(Qt::Key_Home);
  key(Qt::Key_Right);
  EXPECT_EQ(inView(), "xPhoto xSea xHills xnotes");
  key(Qt::Key_Right);
  EXPECT_EQ(current(), QStringLiteral("Sea"));
  key(Qt::Key_Left);
  key(Qt::Key_Left);
  EXPECT_EQ(inView(), "xPhoto xnotes");
  EXPECT_EQ(current(), QStringLiteral("Photos"));
  press("pbExpand");
  EXPECT_EQ(tree().model()->rowCount(), 7);
  // Closing a folder around the current row takes the row to the folder.
  click(QStringLiteral("boat.jpg"), 2, Box);
  EXPECT_EQ(current(), QStringLiteral("boat.jpg"));
  click(QStringLiteral("Photos"), 0, Arrow);
  EXPECT_EQ(current(), QStringLiteral("Photos"));
}

TEST_F(RestoreViewTest, FindsAsOneTypesAndOpensTheFoldersAbove) {
  doOpenIndex(photos(), "No");
  press("pbCollapse");
  QTest::keyClick(&tree(), Qt::Key_B);
  auto& field = find<QLineEdit>("txFind");
  EXPECT_EQ(current(), QStringLiteral("beach.jpg"));
  EXPECT_EQ(inView(), ".Photo .Sea .beach .boat. .Hills .notes");
  QTest::keyClicks(&field, QStringLiteral("OA"));
  EXPECT_EQ(field.text(), QStringLiteral("bOA"));
  EXPECT_EQ(current(), QStringLiteral("boat.jpg"));
  QTest::keyClicks(&field, QStringLiteral("x"));
  EXPECT_TRUE(find("findMissing").isVisible());
  EXPECT_FALSE(find("pbFindNext").isEnabled());

  Person::type(field, "jpg");
  EXPECT_FALSE(find("findMissing").isVisible());
  QTest::keyClick(&field, Qt::Key_Return);
  QTest::keyClick(&field, Qt::Key_F3);
  EXPECT_EQ(current().left(6), QStringLiteral("A very"));
  person.answers("messageBox", "OK");
  press("pbFindNext");
  EXPECT_EQ(person.messages().back(), "No more matching item found.");

  // The name is cut, so its path comes as a tool tip.
  const QPoint place = tree().visualRect(tree().currentIndex()).center();
  QHelpEvent hover(QEvent::ToolTip, place, tree().viewport()->mapToGlobal(place));
  QApplication::sendEvent(tree().viewport(), &hover);
  EXPECT_TRUE(QToolTip::text().endsWith(QStringLiteral("Hills\\") + QLatin1String(LongName)));
}

TEST_F(RestoreViewTest, ANameIsAskedForUntilItIsFound) {
  doOpenIndex(photos(), "No");
  person.when("frmFind", [this](QWidget& dialog) {
    auto& name = Person::find<QLineEdit>(dialog, "txName");
    EXPECT_EQ(dialog.focusWidget(), &name);
    EXPECT_FALSE(Person::find(dialog, "pbOK").isEnabled());
    Person::type(name, "BOAT");
    Person::press(dialog, "matchCase");
    person.answers("messageBox", "OK");
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(person.messages().back(), "No matching item found in backup index.");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.focusWidget(), &name);
    EXPECT_EQ(name.selectedText(), QStringLiteral("BOAT")) << "the next try takes its place";
    QTest::keyClicks(&name, QStringLiteral("boat"));
    QTest::keyClick(&name, Qt::Key_Return);
  });
  press("pbFind");
  EXPECT_TRUE(person.isDone());
  EXPECT_EQ(current(), QStringLiteral("boat.jpg"));
}

TEST_F(RestoreViewTest, TellsTheRoomOfTheTargetAndKeepsTheOptions) {
  doOpenIndex(photos(), "No");
  EXPECT_EQ(find<QLineEdit>("txRestoreTo").text().toStdString(), target);
  EXPECT_TRUE(text("targetRoom").endsWith(QStringLiteral(" free")));
  Person::type(find<QLineEdit>("txRestoreTo"), target + "/none");
  EXPECT_EQ(text("targetRoom"), QStringLiteral("There is no such folder."));
  EXPECT_EQ(program->restorePage.txRestoreTo, target + "/none");

  EXPECT_TRUE(find<QRadioButton>("RestoreOpt1").isChecked());
  press("RestoreOpt3");
  press("OnlyRestoreFile");
  press("SkipOpen");
  EXPECT_EQ(program->restorePage.RestoreOpt, ExistingSkip);
  EXPECT_TRUE(program->restorePage.OnlyRestoreFile);
  EXPECT_FALSE(program->restorePage.SkipOpen);
}

TEST_F(RestoreViewTest, BringsWhatWasTickedBackFromItsDiscByteForByte) {
  std::string beach;
  for (int i = 0; i < 300'000; ++i) beach += static_cast<char>(i * 31 + i / 251);
  temp.write("source/Sea/beach.jpg", beach);
  temp.write("source/Sea/boat.jpg", "boat");
  temp.write("source/Hills/hut.jpg", "hut");
  set("Restore", "Target", target);
  doStart();
  doBackUpSource();

  person.answers("frmLoadDisc", "pbOK");
  person.answers("messageBox", "No");
  find<QAction>("page2").trigger();
  EXPECT_EQ(inView(), ".Hills .hut.j .Sea .beach .boat.");
  click(QStringLiteral("Sea"), 0, Box);
  click(QStringLiteral("boat.jpg"), 1, Box);
  EXPECT_EQ(inView(), ".Hills .hut.j -Sea xbeach .boat.");
  press("PBNext1");
  press("PBNext1");
  EXPECT_EQ(program->restoreResult.end, RestoreResult::End::Finished) << events(1);
  EXPECT_TRUE(test::TempDir::read(target + "/Sea/beach.jpg") == beach);
  EXPECT_FALSE(std::filesystem::exists(target + "/Sea/boat.jpg"));
  EXPECT_FALSE(std::filesystem::exists(target + "/Hills/hut.jpg"));
}

}  // namespace
}  // namespace korvenal::ui
