#include <gtest/gtest.h>

#include "device/DeviceBench.h"
#include "device/frmDevice.h"

namespace korvenal::test {

TEST(DriveNames, AreWhatTheDriveSaysOfItself) {
  const std::map<std::string, std::string> names = {
      {"SCSI#CdRom&Ven_X&Prod_Y_Z&Rev_1.0#4&2b&0", "X Y Z"},
      {"SCSI#CDROM&VEN_HL-DT-ST&PROD_DVDRAM__GH24&REV_LN00#sr0", "HL-DT-ST DVDRAM GH24"},
      {"IMAGE#CDROM&VEN_Image&PROD_Drive_1&REV_1#V", "IMAGE DRIVE 1"},
      {"IDE#CDROMPlextor_PX-716A____1.09#5&a", "PLEXTOR PX-716A 1.09"},
      {"", ""},
  };
  for (const auto& [path, name] : names)
    EXPECT_EQ(DriveDiscovery::doCleanDriveName(path), name) << path;
  EXPECT_EQ(DriveDiscovery::doCutDriveRevision(std::string_view("MAKER X 1.0\0rest", 16)),
            "MAKER X");
  EXPECT_EQ(DriveDiscovery::doCutDriveRevision("WHOLE"), "WHOLE");
}

class DriveTest : public testing::Test {
 protected:
  DeviceBench bench_;
};

TEST_F(DriveTest, OnlyBurnersOfTheCdClassAreListed) {
  for (const char letter : {'F', 'D', 'E'}) bench_.doConnect(letter);
  bench_.devices.paths['C'] = "STORAGE#Volume#disk";
  bench_.devices.paths['A'] = "SCSI#CDROM&VEN_X#never looked at";
  bench_.engine.readers = {'E'};
  EXPECT_EQ(bench_.drives.doListBurners(), 2);
  EXPECT_EQ(bench_.drives.DriveNames[0], "");
  EXPECT_EQ(bench_.drives.DriveNames[1], "D: MAKER WRITER D");
  EXPECT_EQ(bench_.drives.DriveNames[2], "F: MAKER WRITER F");
  EXPECT_EQ(bench_.drives.DriveNames[3], "");
}

TEST_F(DriveTest, ChosenDrivesMustBeThereAndAble) {
  EXPECT_FALSE(bench_.drives.doCheckDevice(0)) << "no drive is chosen";
  for (const char letter : {'D', 'E'}) bench_.doConnect(letter);
  bench_.engine.capabilities = {{'D', {13}}, {'E', {16, 18}}};
  bench_.doChoose("DE");
  EXPECT_TRUE(bench_.drives.doCheckDevice(0));
  EXPECT_TRUE(bench_.drives.doCheckDevice(1));
  bench_.desktop.answers = {Answer::Ok};
  EXPECT_FALSE(bench_.drives.doCheckDevice(2));
  ASSERT_EQ(bench_.desktop.asked.size(), 1U);
  EXPECT_EQ(bench_.desktop.asked[0].text,
            "Current drive (D:) is not capable of recording data to DVD+R DL.\n"
            "Please change device setting or change the disc type.");
  bench_.state.IgnoreEvents = true;
  EXPECT_FALSE(bench_.drives.doCheckDevice(2)) << "silent, yet the same";

  bench_.state.IgnoreEvents = false;
  bench_.doChoose("DEF");
  EXPECT_FALSE(bench_.drives.doCheckDevice(2)) << "a vanished drive is no matter of this message";
}

TEST_F(DriveTest, StoredValuesOutOfRangeAreMended) {
  bench_.folder.write("app/KORVEN2.dat",
                      "[Devices]\ndvcType=7\ndvcReadCD=30\ndvcWriteCD=30\ndvcReadDVD=14\n"
                      "dvcWriteDVD=14\ndvcM_ErrorMax=0\ndvcAL_ErrorMax=6\ndvcS_Eject=5\n"
                      "dvcS_Name=v: old\ndvcM_Drives=9\n");
  DeviceSettings& device = bench_.device;
  device.doReadDvcData(bench_.profile);
  EXPECT_EQ(device.DeviceMode, 0);
  EXPECT_EQ(device.ReadSpeedCD, 0);
  EXPECT_EQ(device.WriteSpeedCD, 1);
  EXPECT_EQ(device.ReadSpeedDVD, 0);
  EXPECT_EQ(device.WriteSpeedDVD, 1);
  EXPECT_EQ(device.MultiErrorMax, 1);
  EXPECT_EQ(device.AutoloaderErrorMax, 1);
  EXPECT_EQ(device.SingleEject, 1);
  EXPECT_EQ(device.MultiDriveCount, 5);
  EXPECT_EQ(device.DeviceName, "Single-drive (V:)");
  bench_.folder.write("app/KORVEN2.dat",
                      "[Devices]\ndvcType=1\ndvcM_Name2=E\ndvcM_Name4=\xC3\xA4\ndvcM_Name5=F\n");
  device.doReadDvcData(bench_.profile);
  EXPECT_EQ(device.DeviceName, "Multiple-drive (E:F:)");
}

class DeviceFormTest : public DriveTest {
 protected:
  /// Shows the form to somebody who does this with it.
  void show(const std::function<void(frmDevice&)>& act) {
    frmDevice form({.state = bench_.state,
                    .desktop = bench_.desktop,
                    .engine = bench_.engine,
                    .drives = bench_.drives,
                    .settings = bench_.device,
                    .profile = bench_.profile,
                    .trays = trays_});
    bench_.desktop.onForm = [&act](Form& shown) { act(dynamic_cast<frmDevice&>(shown)); };
    bench_.desktop.doShowModal(form);
  }

  MemoryTrays trays_;
};

TEST_F(DeviceFormTest, TheOnlyDriveIsChosenAtTheFirstStart) {
  bench_.doConnect('V');
  show([](frmDevice& form) { form.pbOK(); });
  EXPECT_EQ(bench_.device.DeviceName, "Single-drive (V:)");
  EXPECT_EQ(bench_.profile.doReadProfile("Devices", "dvcS_Name", ""), "V");
}

TEST_F(DeviceFormTest, CancelSavesTooAndCommandsStayUnchanged) {
  for (const char letter : {'D', 'E'}) bench_.doConnect(letter);
  const std::string command = " \"/opt/my loader\" --say \"go on\"";
  show([&](frmDevice& form) {
    EXPECT_EQ(form.driveChoices.size(), 3U);
    form.OptDevice = 2;
    form.AL01 = 2;
    form.WriteSpeedDVD = 13;
    form.doSetCommand(4, command);
    form.doSetCommand(0, std::string(600, 'x'));
    form.doCheckSingleEject(false);
    form.doCheckMultiSkipFirst(true);
    form.pbCancel();
  });
  bench_.device.doReadDvcData(bench_.profile);
  EXPECT_EQ(bench_.device.DeviceName, "Autoloader (E:)");
  EXPECT_EQ(bench_.device.AutoloaderCommand[4], command);
  EXPECT_EQ(bench_.device.AutoloaderCommand[0], std::string(511, 'x')) << "not lost altogether";
  EXPECT_EQ(bench_.device.WriteSpeedDVD, 13);
  EXPECT_EQ(bench_.device.SingleSkipEjectFirst, 0) << "goes with the eject";
  EXPECT_EQ(bench_.device.MultiSkipEjectFirst, 1);
  EXPECT_EQ(frmDevice::speedChoicesCD().size(), 30U);
  EXPECT_EQ(frmDevice::speedChoicesDVD()[13], "2x");
}

TEST_F(DeviceFormTest, ADriveThatARunFindsIsFoundByTheFormToo) {
  for (const char letter : {'D', 'E'}) bench_.doConnect(letter);
  bench_.profile.doWriteProfile("Devices", "dvcS_Name", "e: by hand");
  bench_.device.doReadDvcData(bench_.profile);
  ASSERT_EQ(bench_.device.DriveLetters, "E:");
  show([](frmDevice& form) {
    EXPECT_EQ(form.singleDrive, 2);
    form.pbOK();
  });
  EXPECT_EQ(bench_.device.DriveLetters, "E:");
}

TEST_F(DeviceFormTest, ADriveThatIsNotThereStaysChosenUntilAnotherIsPicked) {
  bench_.doConnect('V');
  bench_.profile.doWriteProfiles({{"Devices", "dvcType", "1"},
                                  {"Devices", "dvcM_Name1", "E"},
                                  {"Devices", "dvcM_Name2", "V"},
                                  {"Devices", "dvcS_Name", "F"}});
  bench_.device.doReadDvcData(bench_.profile);
  bench_.desktop.answerAllOk = true;
  show([](frmDevice& form) {
    EXPECT_EQ(form.multiDrive[0], 0);
    EXPECT_EQ(form.absentSingleDrive(), "F");
    form.pbRefresh();
    form.pbOK();
    EXPECT_TRUE(form.isClosed());
  });
  EXPECT_EQ(bench_.device.DeviceName, "Multiple-drive (E:V:)");
  EXPECT_EQ(bench_.device.SingleDrive, "F");
  show([](frmDevice& form) {
    form.OptDevice = 0;
    form.singleDrive = 1;
    form.pbOK();
  });
  EXPECT_EQ(bench_.device.DeviceName, "Single-drive (V:)");
}

TEST_F(DeviceFormTest, SeveralDrivesMustBeTwoAndDifferent) {
  for (const char letter : {'D', 'E', 'F'}) bench_.doConnect(letter);
  bench_.desktop.answers = {Answer::No, Answer::Ok, Answer::Yes};
  show([&](frmDevice& form) {
    form.OptDevice = 1;
    form.multiDrive = {0, 2, 0, 0, 0};
    form.pbOK();
    form.multiDrive = {1, 2, 0, 1, 0};
    form.doCloseBox();
    EXPECT_EQ(bench_.desktop.asked.back().text, "Drive name duplicated.");
    EXPECT_EQ(form.focusedMultiDrive, 3);
    form.multiDrive = {};
    form.pbCancel();
    EXPECT_EQ(form.OptDevice, 0);
    EXPECT_FALSE(form.isClosed());
    form.OptDevice = 1;
    form.multiDrive = {0, 3, 0, 0, 1};
    form.pbOK();
  });
  EXPECT_EQ(bench_.device.DriveLetters, "F:D:");
}

}  // namespace korvenal::test
