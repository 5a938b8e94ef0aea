#include "ui/WindowFixture.h"

namespace korvenal::ui {
namespace {

constexpr int V = 1, W = 2, X = 3;  ///< entries of a drive list, behind "Nil"

class DeviceSettingsTest : public WindowFixture {
 protected:
  DeviceSettingsTest() { imageDrives = 3; }

  /// Opens the settings by the menu, for somebody who does this with them and closes them.
  void open(const Person::Deed& deed) {
    person.when("frmDevice", deed);
    find<QMenu>("cmdSettings").actions().at(0)->trigger();
  }
  /// Chooses an entry of a list by the keys of a person who stands on its first one.
  static void choose(QWidget& dialog, const std::string& list, int entry) {
    auto& box = Person::find<QComboBox>(dialog, list);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < entry; ++i) QTest::keyClick(&box, Qt::Key_Down);
  }
  static int chosen(QWidget& dialog, const std::string& list) {
    return Person::find<QComboBox>(dialog, list).currentIndex();
  }
  static bool isTicked(QWidget& dialog, const std::string& box) {
    return Person::find(dialog, box).property("checked").toBool();
  }
  static void escape(QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }
  QString device() { return find<QLabel>("DeviceName").text(); }
};

TEST_F(DeviceSettingsTest, EveryModeKeepsWhatWasChosenForIt) {
  doStart();
  open([](QWidget& dialog) {
    EXPECT_EQ(chosen(dialog, "singleDrive"), V);
    choose(dialog, "singleDrive", W);
    choose(dialog, "WriteSpeedDVD", 4);
    Person::press(dialog, "OptDevice1");
    choose(dialog, "multiDrive0", X);
    choose(dialog, "multiDrive4", V);
    Person::press(dialog, "multiEject4");
    EXPECT_THAT(Person::find<QLabel>(dialog, "multiDrive4Disc").text().toStdString(),
                testing::HasSubstr("tray open"));
    EXPECT_FALSE(Person::find(dialog, "multiClose3").isEnabled());
    choose(dialog, "MultiErrorMax", 2);
    Person::press(dialog, "pbOK");
  });
  EXPECT_EQ(device(), QStringLiteral("Multiple-drive (X:V:)"));
  open([](QWidget& dialog) {
    Person::press(dialog, "OptDevice2");
    choose(dialog, "AL01", X);
    Person::type(Person::find(dialog, "AutoloaderCommand1"), "robot --say \"go on\"");
    Person::press(dialog, "AutoloaderBadDisc");
    escape(dialog);
  });
  EXPECT_EQ(device(), QStringLiteral("Autoloader (X:)")) << "every way out keeps the settings";

  doEnd();
  doStart();
  open([](QWidget& dialog) {
    EXPECT_TRUE(isTicked(dialog, "OptDevice2"));
    EXPECT_EQ(chosen(dialog, "AL01"), X);
    EXPECT_EQ(Person::find<QLineEdit>(dialog, "AutoloaderCommand1").text(),
              QStringLiteral("robot --say \"go on\""));
    EXPECT_FALSE(isTicked(dialog, "AutoloaderBadDisc"));
    EXPECT_EQ(Person::find<QComboBox>(dialog, "WriteSpeedDVD").currentText(),
              QStringLiteral("20x"));
    Person::press(dialog, "OptDevice1");
    EXPECT_EQ(chosen(dialog, "multiDrive0"), X);
    EXPECT_EQ(chosen(dialog, "multiDrive1"), 0);
    EXPECT_EQ(chosen(dialog, "multiDrive4"), V);
    EXPECT_EQ(Person::find<QComboBox>(dialog, "MultiErrorMax").currentText(), QStringLiteral("3"));
    Person::press(dialog, "OptDevice0");
    EXPECT_EQ(chosen(dialog, "singleDrive"), W);
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(device(), QStringLiteral("Single-drive (W:)"));
}

TEST_F(DeviceSettingsTest, BoxesThatHangTogetherFollowEachOther) {
  doStart();
  open([](QWidget& dialog) {
    const auto tryPair = [&dialog](const char* eject, const char* skipFirst) {
      if (!isTicked(dialog, skipFirst)) Person::press(dialog, skipFirst);
      Person::press(dialog, eject);
      EXPECT_FALSE(isTicked(dialog, skipFirst)) << skipFirst;
      Person::press(dialog, skipFirst);
      EXPECT_TRUE(isTicked(dialog, eject)) << eject;
      Person::press(dialog, skipFirst);
      EXPECT_TRUE(isTicked(dialog, eject)) << eject;
    };
    tryPair("chkSingleEject", "chkSSkipEjectFirst");
    Person::press(dialog, "OptDevice1");
    tryPair("chkMultiEject", "chkMSkipEjectFirst");
    Person::press(dialog, "OptDevice0");
    Person::press(dialog, "pbOK");
  });
  EXPECT_EQ(program->deviceSettings.SingleSkipEjectFirst, 0);
  EXPECT_EQ(program->deviceSettings.SingleEject, 1);
}

TEST_F(DeviceSettingsTest, DrivesThatCannotWorkTogetherKeepTheWindowOpen) {
  doStart();
  open([this](QWidget& dialog) {
    const auto focus = [&dialog] { return dialog.focusWidget()->objectName(); };
    Person::press(dialog, "OptDevice1");
    choose(dialog, "multiDrive0", V);
    person.answers("messageBox", "No");
    Person::press(dialog, "pbOK");
    EXPECT_EQ(focus(), QStringLiteral("multiDrive1"));
    choose(dialog, "multiDrive3", V);
    person.answers("messageBox", "OK");
    Person::press(dialog, "pbOK");
    EXPECT_EQ(focus(), QStringLiteral("multiDrive3"));
    choose(dialog, "multiDrive0", 0);
    person.answers("messageBox", "Yes");
    escape(dialog);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(isTicked(dialog, "OptDevice0"));
    EXPECT_FALSE(Person::find(dialog, "multiDrive3").isVisible());
    escape(dialog);
  });
  EXPECT_THAT(person.messages(),
              testing::ElementsAre("Please select at least two drives in \"Multiple-drive\" mode.\n"
                                   "Do you want to change to \"Single-drive\" mode?",
                                   "Drive name duplicated.",
                                   "Please select at least two drives in \"Multiple-drive\" mode.\n"
                                   "Do you want to change to \"Single-drive\" mode?"));
  EXPECT_EQ(device(), QStringLiteral("Single-drive (V:)"));
}

TEST_F(DeviceSettingsTest, NobodyOpensTheMenusSettingsDuringARun) {
  doStart();
  const auto isOpen = [this] { return find<QMenu>("cmdSettings").actions().at(0)->isEnabled(); };
  press("TASK04");
  person.when("frmLoadDisc", [&](QWidget& prompt) {
    EXPECT_FALSE(isOpen()) << "it would take the drive that the run has chosen";
    Person::press(prompt, "pbStop");
  });
  press("PBNext2");
  EXPECT_TRUE(isOpen());
}

TEST_F(DeviceSettingsTest, TraysMoveAtOnceAndTheListIsReadAgain) {
  imageDrives = 2;
  doStart();
  ASSERT_TRUE(platform->ports(*desktop).trays.insertBlank('W', 2, "Holiday", 0));
  open([this](QWidget& dialog) {
    const auto disc = [&dialog] { return Person::find<QLabel>(dialog, "singleDriveDisc").text(); };
    choose(dialog, "singleDrive", W);
    EXPECT_THAT(disc().toStdString(), testing::HasSubstr("blank"));
    Person::press(dialog, "SingleEject");
    EXPECT_THAT(disc().toStdString(), testing::HasSubstr("tray open"));
    Person::press(dialog, "SingleClose");
    EXPECT_THAT(disc().toStdString(), testing::Not(testing::HasSubstr("tray open")));
    person.answers("messageBox", "OK");
    Person::press(dialog, "pbRefresh");
    EXPECT_EQ(chosen(dialog, "singleDrive"), W);
    choose(dialog, "singleDrive", 0);
    EXPECT_EQ(disc(), QString());
    EXPECT_FALSE(Person::find(dialog, "SingleEject").isEnabled());
    choose(dialog, "singleDrive", V);
    Person::press(dialog, "pbOK");
  });
  EXPECT_THAT(person.messages(), testing::ElementsAre("This system has 2 CD/DVD drives connected.\n"
                                                      "V: IMAGE DRIVE 1\nW: IMAGE DRIVE 2"));
}

}  // namespace
}  // namespace korvenal::ui
