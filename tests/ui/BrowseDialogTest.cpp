#include <QCheckBox>
#include <QLineEdit>
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

}  // namespace
}  // namespace korvenal::ui
