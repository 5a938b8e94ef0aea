#include <QLineEdit>
#include <QTableView>
#include <QtTest>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

/// Names in the job's table, edited in place.
class RenameTest : public WindowFixture {
 protected:
  void SetUp() override {
    temp.write("source/one.txt", "1");
    temp.write("source/two.txt", "2");
    doStart();
    static_cast<MainWindow&>(window()).act([this] {
      program->doTask01();
      program->addItems.doDropItems({source + "one.txt", source + "two.txt"});
    });
    table().setCurrentIndex(table().model()->index(0, ContentsName));
  }

  QTableView& table() { return find<QTableView>("vsContents"); }
  /// The field in view; one that is done with may still wait for its end.
  QLineEdit& edit() {
    for (auto* field : table().findChildren<QLineEdit*>(QStringLiteral("nameEdit")))
      if (field->isVisible()) return *field;
    return Person::find<QLineEdit>(table(), "no field is open");
  }
  /// Enter: behind the key the field closes, and behind that the name is taken.
  void finish() {
    QTest::keyClick(&edit(), Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
  }
  std::string name(int row) { return program->job.vsContents.text(row, ContentsName); }
};

TEST_F(RenameTest, TakesWhatIsTypedButForForbiddenCharacters) {
  QTest::keyClick(&table(), Qt::Key_F2);
  Person::type(edit(), "le/t:ter.txt");
  finish();
  EXPECT_EQ(name(1), "letter.txt") << "the dot came with the old name";
  EXPECT_EQ(name(2), "two.txt");
}

TEST_F(RenameTest, RefusesTheNameOfAnotherItemAndGoesOnEditing) {
  QTest::keyClick(&table(), Qt::Key_F2);
  Person::type(edit(), "TWO.txt");
  person.answers("messageBox", "OK");
  finish();
  EXPECT_EQ(person.messages(), std::vector<std::string>{"Name duplicated!"});
  EXPECT_EQ(name(1), "one.txt");
  Person::type(edit(), "three.txt");
  finish();
  EXPECT_EQ(name(1), "three.txt");
}

}  // namespace
}  // namespace korvenal::ui
