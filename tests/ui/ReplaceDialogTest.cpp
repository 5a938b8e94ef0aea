#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QtTest>

#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

constexpr std::size_t NewBytes = 4096;
constexpr std::size_t OldBytes = 10 * 1024;

/// A restore of five files into a folder where all of them stand already.
class ReplaceDialogTest : public WindowFixture {
 protected:
  void doBackUp() {
    for (const char* name : Names)
      temp.write(std::string("source/") + name, std::string(NewBytes, 'n'));
    set("Restore", "Target", target);
    doStart();
    doBackUpSource();
  }
  void doReadIndex() {
    for (const char* name : Names)
      temp.write("target/" + std::string(name), std::string(OldBytes, 'o'));
    person.answers("frmLoadDisc", "pbOK");
    person.answers("messageBox", "Yes");
    find<QAction>("page2").trigger();
    press("PBNext1");
  }
  /// One letter a file: 'n' for the new one, 'o' for the old one.
  std::string found() {
    std::string all;
    for (const char* name : Names) all += test::TempDir::read(target + "/" + name).substr(0, 1);
    return all;
  }
  static QStringList texts(QWidget& dialog, const std::string& panel) {
    QStringList all;
    for (const auto* label : Person::find<QGroupBox>(dialog, panel).findChildren<QLabel*>())
      all << label->text();
    return all;
  }

  static constexpr const char* Names[] = {"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg"};
};

TEST_F(ReplaceDialogTest, TakesEveryAnswerAndKeepsTheFileOnEscape) {
  doBackUp();
  doReadIndex();
  person.when("frmReplace", [](QWidget& dialog) {
    const QStringList existing = texts(dialog, "existing");
    const QStringList onDisc = texts(dialog, "onDisc");
    ASSERT_EQ(existing.size(), 3);
    EXPECT_EQ(existing[0], QStringLiteral("a.jpg"));
    EXPECT_EQ(existing[1], QStringLiteral("10 KB"));
    EXPECT_EQ(onDisc[1], QStringLiteral("4 KB"));
    EXPECT_TRUE(onDisc[2].startsWith(QStringLiteral("Modified date:  2")));
    Person::press(dialog, "pbYes");
  });
  person.answers("frmReplace", "pbNo");
  person.when("frmReplace", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  person.answers("frmReplace", "pbReplaceAll");
  press("PBNext1");
  EXPECT_EQ(program->restoreResult.end, RestoreResult::End::Finished) << events(1);
  EXPECT_EQ(found(), "noonn");
}

TEST_F(ReplaceDialogTest, EnterKeepsTheFileAndCancelEndsTheRestore) {
  doBackUp();
  doReadIndex();
  person.when("frmReplace", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
  person.answers("frmReplace", "pbCancel");
  press("PBNext1");
  EXPECT_EQ(program->restoreResult.end, RestoreResult::End::Stopped) << events(1);
  EXPECT_EQ(found(), "ooooo");
}

}  // namespace
}  // namespace korvenal::ui
