#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>
#include <filesystem>

#include "ui/WindowFixture.h"

// A person at the prompt for discs, serving image drives by hand.

namespace korvenal::ui {
namespace {

class LoadDiscTest : public WindowFixture {
 protected:
  LoadDiscTest() { feeder = false; }

  static constexpr std::uintmax_t MostOfACd = 400'000'000;

  /// On to the run page, with so many files of this size; 0: one small file.
  void doPrepareBackup(int files, std::uintmax_t bytes = MostOfACd) {
    for (int number = 1; number <= files; ++number)
      temp.sparse("source/part" + std::to_string(number) + ".bin", bytes);
    if (files == 0) temp.write("source/letter.txt", "Dear Ann");
    doStart();
    static_cast<MainWindow&>(window()).act([this, bytes] {
      program->doTask01();
      program->jobControls.setJobName("Holiday");
      program->jobControls.setDiscType(bytes > MostOfACd ? 1 : 0);
      program->job.optSplitAndSpan = 0;
      program->addItems.doDropItems({temp.path() + "source"});
      program->job.doMarkChanged(false);
    });
    press("PBNext0");
  }

  /// What the person does at the next prompt, once its drives are at rest.
  void atPrompt(Person::Deed deed) { person.when("frmLoadDisc", std::move(deed), "pbOK"); }

  static QMenu& menu(QWidget& in, const std::string& name) {
    QMenu& found = Person::find<QMenu>(in, name);
    found.popup(in.pos());
    return found;
  }
  /// The discs of the shelf; the menu around them fills as it opens.
  static QMenu& shelfMenu(QWidget& in) {
    menu(in, "trayMenu0").close();
    return menu(in, "shelf0");
  }
  static void pressAlt(QWidget& prompt, Qt::Key key) {
    // A menu that closes leaves no window in front without a window manager.
    prompt.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&prompt));
    QTest::keyClick(&prompt, key, Qt::AltModifier);
  }
  static QAction* entry(QMenu& in, const QString& text) {
    for (QAction* action : in.actions())
      if (action->text().remove(QLatin1Char('&')).startsWith(text)) return action;
    return nullptr;
  }
  static void choose(QMenu& in, const QString& text) {
    QAction* action = entry(in, text);
    ASSERT_TRUE(action != nullptr && action->isEnabled()) << text.toStdString();
    QTest::mouseClick(&in, Qt::LeftButton, {}, in.actionGeometry(action).center());
  }
  static std::string inDrive(QWidget& prompt, int row) {
    return Person::find(prompt, "disc" + std::to_string(row)).accessibleName().toStdString();
  }
  std::string imageIn(char letter) {
    const std::string file = platform->ports(*desktop).trays.discIn(letter).file;
    return std::filesystem::path(file).stem().string();
  }
  std::string shelf() { return platform->ports(*desktop).trays.shelf(); }
  std::string disc(int number) {
    return find("disc" + std::to_string(number)).accessibleDescription().toStdString();
  }
  QString record(int row, int column) {
    return find<QTableView>("vsOutput0").model()->index(row, column).data().toString();
  }
};

TEST_F(LoadDiscTest, ABackupGetsANewBlankDiscFromTheMenuNamedAfterIt) {
  doPrepareBackup(0);
  atPrompt([](QWidget& prompt) {
    EXPECT_EQ(inDrive(prompt, 0), "no disc");
    Person::press(prompt, "pbOK");
    EXPECT_EQ(prompt.focusWidget(), &Person::find(prompt, "pbOK"));
  });
  person.answers("messageBox", "OK");
  atPrompt([](QWidget& prompt) {
    choose(menu(prompt, "trayMenu0"), QStringLiteral("New Blank CD-R"));
    EXPECT_THAT(inDrive(prompt, 0), testing::StartsWith("CD-R, blank, "));
    EXPECT_THAT(inDrive(prompt, 0), testing::EndsWith("disc 01"));
    choose(menu(prompt, "trayMenu0"), QStringLiteral("Take Out"));
    EXPECT_EQ(inDrive(prompt, 0), "no disc, tray open");
    QMenu& changes = menu(prompt, "trayMenu0");
    EXPECT_FALSE(entry(changes, QStringLiteral("Take Out"))->isEnabled());
    changes.close();
    QMenu& blanks = *entry(changes, QStringLiteral("Other"))->menu();
    EXPECT_EQ(blanks.actions().front()->text(), QStringLiteral("CD-RW")) << "CD-R stands before";
    blanks.popup({});
    choose(blanks, QStringLiteral("CD-RW"));
    EXPECT_THAT(inDrive(prompt, 0), testing::StartsWith("CD-RW, blank, "));
  });
  person.answers("frmLoadDisc", "pbOK");
  press("PBNext0");
  EXPECT_EQ(person.messages().front(), "Please make sure the disc is loaded and try again.");
  EXPECT_EQ(program->backupResult.end, BackupResult::End::Finished) << events(0);
  EXPECT_THAT(imageIn('V'), testing::MatchesRegex("Holiday \\(.*-F\\) disc 01 2"));
}

TEST_F(LoadDiscTest, AnOldDiscIsFoundAmongManyByTypingAndRestored) {
  feeder = true;
  doPrepareBackup(0);
  person.answers("frmLoadDisc", "pbOK");
  press("PBNext0");
  ASSERT_EQ(program->backupResult.end, BackupResult::End::Finished) << events(0);
  const std::string mine = shelf() + imageIn('V') + ".iso";
  for (int number = 1; number <= 30; ++number) {
    const std::string other = shelf() + "R&D (" + std::to_string(number) + ") disc 01.iso";
    std::filesystem::copy(mine, other);
    std::filesystem::copy(mine + ".disc", other + ".disc");
    const auto later = std::filesystem::last_write_time(mine) + std::chrono::hours(number);
    std::filesystem::last_write_time(other, later);
  }
  doEnd();
  feeder = false;
  set("Restore", "Target", target);
  doStart();

  atPrompt([](QWidget& prompt) {
    choose(menu(prompt, "trayMenu0"), QStringLiteral("Take Out"));
    QMenu& discs = shelfMenu(prompt);
    EXPECT_EQ(discs.actions().first()->text(),
              QStringLiteral("R&&D (30) disc 01  (CD-R, Backup #1)"));
    EXPECT_EQ(entry(discs, QStringLiteral("Holiday")), nullptr) << "an older one";
    choose(discs, QStringLiteral("R"));
    EXPECT_THAT(inDrive(prompt, 0), testing::HasSubstr("R&D (30) disc 01"));
    choose(shelfMenu(prompt), QStringLiteral("Other Disc"));
    EXPECT_THAT(inDrive(prompt, 0), testing::HasSubstr("Holiday"));
  });
  person.when("frmPickDisc", [](QWidget& list) {
    const QAbstractItemModel& discs = *Person::find<QTableView>(list, "vsDisc").model();
    EXPECT_EQ(discs.rowCount(), 30);
    EXPECT_TRUE(Person::find(list, "pbOK").isEnabled()) << "the first one is chosen";
    EXPECT_EQ(Person::find<QLabel>(list, "wanted").text(), QStringLiteral("Asked for: Backup #1"));
    Person::type(Person::find(list, "txName"), "nothing");
    EXPECT_FALSE(Person::find(list, "pbOK").isEnabled());
    Person::type(Person::find(list, "txName"), "r&d");
    QTest::keyClick(&Person::find(list, "txName"), Qt::Key_Down);
    EXPECT_EQ(Person::find<QTableView>(list, "vsDisc").currentIndex().row(), 1);
    Person::type(Person::find(list, "txName"), "holiday");
    ASSERT_EQ(discs.rowCount(), 1);
    QTest::keyClick(&Person::find(list, "txName"), Qt::Key_Return);
  });
  person.answers("frmLoadDisc", "pbOK");
  person.answers("messageBox", "No");
  find<QAction>("page2").trigger();
  EXPECT_THAT(program->restorePage.setName, testing::StartsWith("Holiday ("));
}

TEST_F(LoadDiscTest, ADiscThatCannotGoInLeavesTheTrayAsItWas) {
  doPrepareBackup(0);
  temp.write("app/Discs/spoilt.iso", "");
  temp.write("app/Discs/spoilt.iso.disc", "KORVENAL-DISC 1\ntype=2\ncapacity=1000\n");
  atPrompt([this](QWidget& prompt) {
    choose(menu(prompt, "trayMenu0"), QStringLiteral("New Blank"));
    const std::string before = inDrive(prompt, 0);
    QMenu& discs = shelfMenu(prompt);
    temp.write("app/Discs/spoilt.iso.disc", "spoilt since");
    choose(discs, QStringLiteral("spoilt"));
    EXPECT_EQ(inDrive(prompt, 0), before);
    Person::press(prompt, "pbStop");
  });
  person.answers("messageBox", "OK");
  press("PBNext0");
  EXPECT_EQ(person.messages().back(), "This file is missing, damaged or no image of a disc.");
}

TEST_F(LoadDiscTest, TwoDrivesBurnFromTheDiscThatAPersonPicks) {
  imageDrives = 2;
  set("Devices", "dvcType", "1");
  set("Devices", "dvcM_Drives", "2");
  set("Devices", "dvcM_Name1", "V");
  set("Devices", "dvcM_Name2", "W");
  doPrepareBackup(3);
  atPrompt([](QWidget& prompt) {
    auto& from = Person::find<QComboBox>(prompt, "FromDisc");
    auto& to = Person::find<QComboBox>(prompt, "ToDisc");
    EXPECT_EQ(from.currentText() + to.currentText(), QStringLiteral("12"));
    from.setFocus();
    QTest::keyClicks(&from, QStringLiteral("3"));
    EXPECT_EQ(from.currentText() + to.currentText(), QStringLiteral("33"));
    pressAlt(prompt, Qt::Key_W);
    Person::press(prompt, "multiEject1");
    EXPECT_THAT(inDrive(prompt, 1), testing::HasSubstr(", tray open"));
    EXPECT_EQ(prompt.focusWidget(), &Person::find(prompt, "vsDrive"));
    pressAlt(prompt, Qt::Key_O);
  });
  atPrompt([](QWidget& prompt) {
    QWidget* opened = QApplication::activePopupWidget();
    ASSERT_EQ(opened, &Person::find<QMenu>(prompt, "trayMenu1"));
    QTest::keyClick(opened, Qt::Key_N);
    EXPECT_THAT(inDrive(prompt, 1), testing::EndsWith("disc 03"));
  });
  press("PBNext0");
  EXPECT_EQ(program->backupResult.end, BackupResult::End::Finished) << events(0);
  EXPECT_EQ(find<QTableView>("vsOutput0").model()->rowCount(), 1);
  EXPECT_EQ(record(0, 0), QStringLiteral("W:"));
  EXPECT_EQ(platform->ports(*desktop).trays.discIn('W').label, "Backup #3");
}

TEST_F(LoadDiscTest, StopInMidBurnEndsTheRunAndSaysSo) {
  // So large that the burn cannot end before the stop is noticed.
  constexpr std::uintmax_t HalfADvd = 1'900'000'000;
  doPrepareBackup(4, HalfADvd);
  bool pressed = false;
  const auto refresh = desktop->onRefresh;
  desktop->onRefresh = [&] {
    refresh();
    const Progress& progress = program->grids.etProgress[0];
    if (pressed || progress.bytesDone == 0 || progress.bytesDone >= progress.bytesTotal) return;
    pressed = true;
    press("pbStop0");
    EXPECT_FALSE(find("pbStop0").isEnabled());
    EXPECT_EQ(find("etProgress0").accessibleName(), QStringLiteral("Stop action, please wait..."));
  };
  atPrompt([](QWidget& prompt) {
    choose(menu(prompt, "trayMenu0"), QStringLiteral("New Blank"));
    Person::press(prompt, "pbOK");
  });
  press("PBNext0");
  desktop->onRefresh = refresh;
  EXPECT_TRUE(pressed);
  EXPECT_EQ(program->backupResult.end, BackupResult::End::Stopped);
  EXPECT_THAT(events(0), testing::EndsWith("Stop action...\nAction stop by user.\n"));
  ASSERT_EQ(find<QTableView>("vsOutput0").model()->rowCount(), 1);
  EXPECT_EQ(record(0, 7), QStringLiteral("Action stop by user."));
  EXPECT_EQ(disc(1), "Action stop by user.");
  EXPECT_EQ(disc(2), "3.6 GB") << "still to come";
  EXPECT_TRUE(find("PBNext0").isVisible() && find("PBNext0").isEnabled());
  EXPECT_FALSE(find("ProgressPanel0").isVisible());
  const ImageDisc spoilt = platform->ports(*desktop).trays.discIn('V');
  EXPECT_TRUE(spoilt.closed && spoilt.sessions == 0) << "a DVD-R forgives nothing";

  // The next start goes on with the same disc of the plan, and the spoilt one is told apart.
  atPrompt([](QWidget& prompt) {
    EXPECT_EQ(Person::find<QComboBox>(prompt, "FromDisc").currentText(), QStringLiteral("1"));
    EXPECT_THAT(inDrive(prompt, 0), testing::StartsWith("DVD-R, damaged"));
    Person::press(prompt, "pbStop");
  });
  press("PBNext0");
}

}  // namespace
}  // namespace korvenal::ui
