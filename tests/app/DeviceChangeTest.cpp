#include <gmock/gmock.h>

#include "app/frmMain.h"
#include "device/DeviceBench.h"
#include "device/frmDevice.h"
#include "platform/linux/LinuxPlatform.h"

namespace korvenal::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The program on a machine with drives of its own: D writes everything, E no dual layer discs.
class DeviceChangeTest : public testing::Test {
 protected:
  DeviceChangeTest() {
    for (const char letter : {'D', 'E'}) bench.doConnect(letter);
    bench.engine.capabilities = {{'E', {13}}};
    bench.profile.doWriteProfile("Devices", "dvcS_Name", "D");
    main.doLoad();
  }

  Ports ports() {
    const Ports real = platform.ports(bench.desktop);
    return {real.files,   real.targets,  real.walker, real.archive,  real.archiveBits,
            bench.engine, bench.devices, real.trays,  bench.desktop, real.clock};
  }
  void doChooseDrive(int choice) {
    bench.desktop.onForm = [choice](Form& form) {
      auto& device = dynamic_cast<frmDevice&>(form);
      device.singleDrive = choice;
      device.pbOK();
    };
    main.doDevice();
  }
  std::string events(int action) const {
    const Table& table = main.grids.vsEvent[static_cast<std::size_t>(action)];
    std::string all;
    for (int row = 1; row < table.Rows(); ++row)
      all += table.cellData(row, 1) + table.text(row, 1) + "\n";
    return all;
  }

  DeviceBench bench;
  LinuxPlatform platform{{.applicationFolder = bench.workspace.applicationFolder,
                          .imageDrives = {.folder = bench.workspace.applicationFolder}}};
  frmMain main{ports(), bench.workspace};
};

TEST_F(DeviceChangeTest, TheDiscTypeOfTheJobIsCheckedAgainstTheNewDrive) {
  main.doTask01();
  main.job.comboDiscType = 2;
  doChooseDrive(1);
  EXPECT_THAT(bench.desktop.asked, IsEmpty()) << "nothing has changed";
  bench.desktop.answers = {Answer::Ok};
  doChooseDrive(2);
  ASSERT_EQ(bench.desktop.asked.size(), 1U);
  EXPECT_THAT(bench.desktop.asked[0].text,
              HasSubstr("(E:) is not capable of recording data to DVD+R DL."));
  doChooseDrive(1);

  // A run that opens the settings looks at the drives itself.
  main.state.ActionBusy = true;
  doChooseDrive(2);
  EXPECT_EQ(bench.desktop.asked.size(), 1U);
}

TEST_F(DeviceChangeTest, ARunPageTellsTheDrivesAsTheyAre) {
  const std::string none = "*Device mode: <Nil>\n";
  main.doTaskErase();
  EXPECT_THAT(events(2),
              AllOf(HasSubstr("Device mode:  Single-drive (D:)\n"), Not(HasSubstr(none))));
  doChooseDrive(0);
  EXPECT_THAT(events(2), AllOf(HasSubstr(none), Not(HasSubstr("Single-drive"))));
  EXPECT_EQ(main.deviceSettings.DeviceName, "Single-drive");

  main.doTask01();
  main.controller.PBNext(ActionController::Backup);
  EXPECT_THAT(events(0), HasSubstr(none));
  doChooseDrive(2);
  EXPECT_THAT(events(0), HasSubstr("Device mode:  Single-drive (E:)\n"));
}

}  // namespace
}  // namespace korvenal::test
