#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
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

  void drop(const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
    data.setUrls(urls);
    QWidget* table = items().viewport();
    const QPoint place = table->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table, &drop);
    EXPECT_TRUE(drop.isAccepted());
    // What was dropped is read once the file manager has been let go.
    QCoreApplication::processEvents();
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
  sort(ContentsSize);
  EXPECT_EQ(names(), "b c a");
  sort(ContentsSize);
  EXPECT_EQ(names(), "a c b");
  sort(ContentsTypeName);
  EXPECT_EQ(names(), "a c b");
  sort(ContentsName);
  EXPECT_EQ(names(), "a b c");
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
