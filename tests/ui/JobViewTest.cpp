#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QUrl>
#include <QtTest>
#include <fstream>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

/// The backup page with a new job.
class JobViewTest : public WindowFixture {
 protected:
  void doOpenPage() {
    doStart();
    program->doTask01();
    static_cast<MainWindow&>(window()).refresh();
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  }

  std::string makeFile(const std::string& name, std::size_t bytes) {
    const std::string path = source + name;
    std::ofstream(path, std::ios::binary) << std::string(bytes, 'x');
    return path;
  }

  QTableView& items() { return find<QTableView>("vsContents"); }

  bool drop(QMimeData& data, Qt::DropAction action, const QPoint& place) {
    QWidget* table = items().viewport();
    QDragEnterEvent enter(place, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(place, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent drop(place, action, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &drop);
    return drop.isAccepted();
  }
  /// As a file manager hands files over: their paths percent-encoded, each byte that needs it.
  void drop(const std::vector<std::string>& paths) {
    QByteArray list;
    for (const std::string& path : paths)
      list += "file://" + QByteArray::fromStdString(path).toPercentEncoding("/") + "\r\n";
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), list);
    EXPECT_TRUE(drop(data, Qt::CopyAction, items().viewport()->rect().center()));
    // What was dropped is read once the file manager has been let go.
    QCoreApplication::processEvents();
  }

  QPoint place(int row) {
    return items().visualRect(items().model()->index(row, ContentsName)).center();
  }
  /// Moves a row: pressed on it, let go at a place. Without a display nothing is carried along by
  /// the mouse, so what the table would hand over is dropped as a display would.
  void drag(int row, const QPoint& to) {
    QTest::mouseClick(items().viewport(), Qt::LeftButton, {}, place(row));
    QAbstractItemModel& model = *items().model();
    ASSERT_TRUE(model.flags(items().currentIndex()) & Qt::ItemIsDragEnabled);
    const std::unique_ptr<QMimeData> data(model.mimeData({items().currentIndex()}));
    EXPECT_FALSE(drop(*data, Qt::MoveAction, to)) << "the view would remove the moved row";
  }
  /// Opens the menu of a row by the right button, and takes the item of this name.
  void choose(int row, const char* item) {
    QTimer::singleShot(0, &items(), [item] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr) << "no menu";
      auto* action = menu->findChild<QAction*>(QLatin1String(item));
      ASSERT_NE(action, nullptr) << item;
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
      menu->close();
    });
    const QPoint at = items().viewport()->mapTo(&window(), place(row));
    QTest::mouseClick(window().windowHandle(), Qt::RightButton, {}, at);
  }

  std::string names() {
    std::string all;
    for (int row = 0; row < items().model()->rowCount(); ++row)
      all += (row > 0 ? " " : "") +
             items().model()->index(row, ContentsName).data().toString().toStdString();
    return all;
  }
};

TEST_F(JobViewTest, DroppedItemsAreMovedAndDeleted) {
  const std::string folder = temp.makeFolder("source/Photos");
  const std::string notes = makeFile("notes.txt", 2048);
  const std::string music = makeFile("music.ogg", 4096);
  doOpenPage();
  EXPECT_FALSE(find("pbEstimate").isEnabled());
  drop({folder, notes, music});
  ASSERT_EQ(names(), "Photos notes.txt music.ogg");
  EXPECT_TRUE(find("pbEstimate").isEnabled());

  items().setCurrentIndex(items().model()->index(1, ContentsName));
  press("PBMoveUp");
  EXPECT_EQ(names(), "notes.txt Photos music.ogg");
  EXPECT_EQ(items().currentIndex().row(), 0);
  EXPECT_FALSE(find("PBMoveUp").isEnabled());

  person.answers("messageBox", "No");
  QTest::keyClick(&items(), Qt::Key_Delete);
  EXPECT_EQ(items().model()->rowCount(), 3);
  person.answers("messageBox", "Yes");
  QTest::keyClick(&items(), Qt::Key_Delete);
  EXPECT_EQ(names(), "Photos music.ogg");
}

TEST_F(JobViewTest, RowsAreDraggedToOtherPlaces) {
  doOpenPage();
  drop({makeFile("a", 1), makeFile("b", 2), makeFile("c", 3), makeFile("d", 4)});
  drag(0, place(2));
  EXPECT_EQ(names(), "b c a d");
  EXPECT_EQ(items().currentIndex().row(), 2) << "the row that was moved stays current";
  drag(3, place(0));
  EXPECT_EQ(names(), "d b c a");
  drag(1, QPoint(place(3).x(), items().viewport()->height() - 5));
  EXPECT_EQ(names(), "d c a b") << "below all rows is the last place";
}

TEST_F(JobViewTest, TheMenuOfARowActsOnThatRow) {
  doOpenPage();
  drop({makeFile("a", 1), makeFile("b", 2), makeFile("c", 3)});
  choose(1, "mnDeleteItem");
  EXPECT_EQ(names(), "a c");
  choose(1, "mnRename");
  auto* editor = items().findChild<QLineEdit*>(QStringLiteral("nameEdit"));
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->selectedText(), QStringLiteral("c"));
  QTest::keyClicks(editor, QStringLiteral("sea"));
  QTest::keyClick(editor, Qt::Key_Return);
  // Behind the key the field closes, and behind that the name is taken.
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_EQ(names(), "a sea");
  choose(0, "mnRandomize");
  EXPECT_EQ(items().model()->rowCount(), 2);
  person.answers("messageBox", "Yes");
  choose(0, "mnClearAll");
  EXPECT_EQ(names(), "");
}

TEST_F(JobViewTest, DroppedNamesKeepEveryByte) {
  const std::string folder = "source/caf\xE9";
  const std::string inside = temp.write(folder + "/100% sea #1.txt", "x");
  const std::string odd = temp.write("source/na\xEFve.txt", "x");
  doOpenPage();
  drop({inside});
  EXPECT_EQ(names(), "100% sea #1.txt");
  EXPECT_EQ(program->job.vsContents.text(1, ContentsPath), inside);
  EXPECT_NE(program->job.vsContents.text(1, ContentsModified), NotExistingText);
  // No disc can hold such a name: it is told under the name that it has.
  person.answers("messageBox", "OK");
  drop({odd});
  EXPECT_EQ(names(), "100% sea #1.txt");
  EXPECT_NE(person.messages().back().find("na\\xEFve.txt"), std::string::npos);
}

TEST_F(JobViewTest, AnItemIsMadeByHand) {
  const std::string notes = makeFile("notes.txt", 2048);
  doOpenPage();
  person.when("frmCreateItem", [this](QWidget& dialog) {
    auto& name = Person::find<QLineEdit>(dialog, "txName");
    auto& path = Person::find<QLineEdit>(dialog, "txSource");
    EXPECT_EQ(dialog.focusWidget(), &name);
    EXPECT_FALSE(Person::find(dialog, "pbOK").isEnabled());
    Person::type(name, "old:notes.txt");
    EXPECT_EQ(name.text(), QStringLiteral("oldnotes.txt"));
    Person::type(path, "notes.txt");
    person.answers("messageBox", "OK");
    Person::press(dialog, "pbOK");
    EXPECT_EQ(person.messages().back(), "Invalid path format.");
    EXPECT_EQ(dialog.focusWidget(), &path);
    Person::type(path, source + "notes.txt");
    QTest::keyClick(&path, Qt::Key_Return);
  });
  press("pbCreateItem");
  EXPECT_EQ(names(), "oldnotes.txt");
  EXPECT_EQ(program->job.vsContents.text(1, ContentsPath), notes);

  person.when("frmCreateItem", [](QWidget& dialog) {
    Person::press(dialog, "TypeOpt1");
    Person::type(Person::find(dialog, "txName"), "Later");
    Person::type(Person::find(dialog, "txSource"), "/media/none/later/");
    Person::press(dialog, "pbOK");
  });
  press("pbCreateItem");
  EXPECT_EQ(names(), "oldnotes.txt Later");
  EXPECT_EQ(items().model()->index(1, ContentsModified).data().toString(),
            QStringLiteral("<Not Existing>"));

  person.when("frmCreateItem", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  press("pbCreateItem");
  EXPECT_TRUE(person.isDone());
  EXPECT_EQ(items().model()->rowCount(), 2);
}

TEST_F(JobViewTest, AClickOnAHeaderSortsAndTurnsRound) {
  const std::string small = makeFile("b", 10);
  const std::string large = makeFile("a", 5'000'000);
  const std::string middle = makeFile("c", 50'000);
  doOpenPage();
  drop({small, large, middle});
  auto& header = *items().horizontalHeader();
  const auto sort = [&](int col) {
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      {header.sectionViewportPosition(col) + 20, header.height() / 2});
  };
  EXPECT_EQ(header.sortIndicatorSection(), -1);
  sort(ContentsSize);
  EXPECT_EQ(names(), "b c a");
  EXPECT_EQ(header.sortIndicatorSection(), ContentsSize);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
  sort(ContentsSize);
  EXPECT_EQ(names(), "a c b");
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  sort(ContentsTypeName);
  EXPECT_EQ(names(), "a c b");
  EXPECT_EQ(header.sortIndicatorSection(), ContentsSize) << "types do not sort";
  sort(ContentsName);
  EXPECT_EQ(names(), "a b c");
  EXPECT_EQ(header.sortIndicatorSection(), ContentsName);
  // The order is no longer that of a column once a row is moved.
  items().setCurrentIndex(items().model()->index(0, ContentsName));
  press("PBMoveDown");
  EXPECT_EQ(names(), "b a c");
  EXPECT_EQ(header.sortIndicatorSection(), -1);
}

TEST_F(JobViewTest, OptionsFollowTheirRules) {
  doOpenPage();
  Person::type(find<QLineEdit>("txJobName"), "My:Job");
  EXPECT_EQ(program->job.txJobName, "MyJob");
  press("optBackupType1");
  EXPECT_EQ(program->job.optBackupType, 1);

  auto& tabs = find<QTabWidget>("OptionsTab");
  tabs.setCurrentIndex(1);
  auto* include = find<QComboBox>("comboInclude").lineEdit();
  Person::type(*include, "jpg");
  EXPECT_EQ(program->job.comboInclude, "*jpg");
  QTest::keyClick(include, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(include, Qt::Key_Delete);
  EXPECT_EQ(include->text(), QStringLiteral("*"));
  auto* exclude = find<QComboBox>("comboExclude").lineEdit();
  Person::type(*exclude, "*");
  EXPECT_EQ(program->job.comboExclude, "*");
  press("chkDateFilter");
  auto& days = find<QLineEdit>("txDateFilter");
  EXPECT_EQ(days.text(), QStringLiteral("90"));
  days.setFocus();
  EXPECT_EQ(exclude->text(), QString());
  Person::type(days, "7x");
  EXPECT_EQ(program->job.txDateFilter, "7");
  press("chkAttribute1");
  EXPECT_FALSE(program->job.chkAttribute[1]);

  tabs.setCurrentIndex(2);
  EXPECT_EQ(tabs.tabText(2), QStringLiteral("Split-and-Span = ON"));
  press("optSplitAndSpan0");
  EXPECT_EQ(tabs.tabText(2), QStringLiteral("Split-and-Span = OFF"));
  EXPECT_FALSE(find("FileSize").isEnabled());
  EXPECT_TRUE(program->job.Modified);
}

}  // namespace
}  // namespace korvenal::ui
