#include <sys/stat.h>
#include <unistd.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QTableView>
#include <QtTest>
#include <fstream>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

class BrowseDialogTest : public WindowFixture {
 protected:
  void makeFile(const std::string& name) {
    std::ofstream(source + name, std::ios::binary) << "text";
  }
  std::string items() {
    std::string all;
    const Table& contents = program->job.vsContents;
    for (int row = 1; row < contents.Rows(); ++row) all += contents.text(row, ContentsName) + " ";
    return all;
  }
  static QTableView& entries(QWidget& dialog) {
    return Person::find<QTableView>(dialog, "entries");
  }
};

TEST_F(BrowseDialogTest, AFolderOfManyFilesIsTickedAsAWholeWhileItStillComesIn) {
  constexpr int Files = 45'000;
  temp.makeFolder("source/many");
  makeFile("one");
  int sevens = 0;
  for (int i = 0; i < Files; ++i) {
    const std::string name = "file " + std::to_string(i);
    ASSERT_EQ(::link((source + "one").c_str(), (source + "many/" + name).c_str()), 0);
    sevens += name.find('7') != std::string::npos ? 1 : 0;
  }
  set("Browser", "Default", source + "many");
  doStart();
  program->doTask01();
  static_cast<MainWindow&>(window()).refresh();
  person.when("frmBrowse", [&](QWidget& dialog) {
    QAbstractItemModel& model = *entries(dialog).model();
    QTRY_COMPARE(model.rowCount(), Files);
    auto& filter = Person::find<QLineEdit>(dialog, "filter");
    filter.setText(QStringLiteral("7"));
    EXPECT_LT(model.rowCount(), sevens);
    Person::press(dialog, "SelectAll");
    EXPECT_EQ(model.rowCount(), sevens);
    EXPECT_EQ(Person::find<QLabel>(dialog, "count").text(),
              QStringLiteral("%1 selected").arg(sevens));
    filter.setText(QStringLiteral("44999"));
    filter.clear();
    QTRY_COMPARE(model.rowCount(), Files);
    Person::press(dialog, "CMD0");
  });
  press("PBAddFiles");
}

TEST_F(BrowseDialogTest, EntriesAreTickedFilteredAndAdded) {
  temp.makeFolder("source/Photos");
  makeFile("Photos/sea.jpg");
  makeFile("apple.txt");
  makeFile("pear.txt");
  set("Browser", "Default", source);
  doStart();
  program->doTask01();
  static_cast<MainWindow&>(window()).refresh();

  person.when("frmBrowse", [](QWidget& dialog) {
    auto& list = entries(dialog);
    auto& all = Person::find<QCheckBox>(dialog, "SelectAll");
    ASSERT_EQ(list.model()->rowCount(), 3);
    EXPECT_FALSE(Person::find(dialog, "CMD1").isEnabled());
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(all.checkState(), Qt::PartiallyChecked);
    // Only what the filter shows is ticked along.
    Person::type(Person::find(dialog, "filter"), "pear");
    ASSERT_EQ(list.model()->rowCount(), 1);
    Person::press(dialog, "SelectAll");
    EXPECT_EQ(all.checkState(), Qt::Checked);
    Person::press(dialog, "CMD1");
  });
  // The browser is there again when the items have been added.
  person.when("frmBrowse", [](QWidget& dialog) {
    EXPECT_FALSE(Person::find(dialog, "CMD1").isEnabled());
    Person::find<QLineEdit>(dialog, "filter").clear();
    auto& list = entries(dialog);
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    ASSERT_EQ(list.model()->rowCount(), 1);
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), QStringLiteral("sea.jpg"));
    QTest::keyClick(&list, Qt::Key_Backspace);
    EXPECT_EQ(list.model()->rowCount(), 3);
    Person::press(dialog, "CMD0");
  });
  press("PBAddFiles");
  ASSERT_TRUE(person.isDone());
  EXPECT_EQ(items(), "Photos pear.txt ");
}

TEST_F(BrowseDialogTest, ThumbnailsShowThePicturesThemselves) {
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(QString::fromStdString(source + "sea.png")));
  makeFile("broken.png");
  // Nobody ever writes to this one: who reads it waits for ever.
  ASSERT_EQ(::mkfifo((source + "pipe.png").c_str(), 0600), 0);
  set("Browser", "Default", source);
  doStart();
  program->doTask01();
  static_cast<MainWindow&>(window()).refresh();
  person.when("frmBrowse", [](QWidget& dialog) {
    QTimer::singleShot(0, &dialog, [] {
      ASSERT_NE(QApplication::activePopupWidget(), nullptr);
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_H);
    });
    Person::press(dialog, "view");
    auto& icons = Person::find<QListView>(dialog, "entryIcons");
    ASSERT_TRUE(icons.isVisible());
    const QModelIndex sea = icons.model()->index(2, 0);
    const auto isRed = [&] {
      const QRect at = icons.visualRect(sea);
      const QImage seen = icons.viewport()->grab().toImage();
      return seen.pixelColor(QPoint(at.center().x(), at.top() + at.height() / 3)) == Qt::red;
    };
    EXPECT_TRUE(QTest::qWaitFor(isRed));
    QTest::mouseClick(icons.viewport(), Qt::LeftButton, {}, icons.visualRect(sea).center());
    QTest::keyClick(&icons, Qt::Key_Space);
    Person::press(dialog, "CMD1");
  });
  person.answers("frmBrowse", "CMD0");
  press("PBAddFiles");
  EXPECT_EQ(items(), "sea.png ");
}

TEST_F(BrowseDialogTest, OpensAsLargeAsItWasLeft) {
  set("Browser", "Default", source);
  doStart();
  program->doTask01();
  static_cast<MainWindow&>(window()).refresh();
  const auto close = [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
  person.when("frmBrowse", [&](QWidget& dialog) {
    dialog.resize(650, 450);
    close(dialog);
  });
  press("PBAddFiles");
  person.when("frmBrowse", [&](QWidget& dialog) {
    EXPECT_EQ(dialog.size(), QSize(650, 450));
    // Hardly narrower than the screen: next time it fills it.
    dialog.resize(dialog.screen()->size().width() - 10, 500);
    close(dialog);
  });
  press("PBAddFiles");
  person.when("frmBrowse", [&](QWidget& dialog) {
    EXPECT_TRUE(dialog.isMaximized());
    EXPECT_GE(dialog.size().width(), dialog.screen()->size().width() - 10);
    close(dialog);
  });
  press("PBAddFiles");
  EXPECT_TRUE(person.isDone());
}

}  // namespace
}  // namespace korvenal::ui
