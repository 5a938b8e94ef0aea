#include <gmock/gmock.h>

#include "app/ProgramBench.h"
#include "device/frmDevice.h"

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

  void doChooseDrive(int choice) {
    bench.desktop.onForm = [choice](Form& form) {
      auto& device = dynamic_cast<frmDevice&>(form);
      device.singleDrive = choice;
      device.pbOK();
    };
    main.doDevice();
  }
  ProgramBench bench;
  frmMain& main = bench.main;
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
  EXPECT_THAT(bench.events(2),
              AllOf(HasSubstr("Device mode:  Single-drive (D:)\n"), Not(HasSubstr(none))));
  doChooseDrive(0);
  EXPECT_THAT(bench.events(2), AllOf(HasSubstr(none), Not(HasSubstr("Single-drive"))));
  EXPECT_EQ(main.deviceSettings.DeviceName, "Single-drive");

  main.doTask01();
  main.controller.PBNext(ActionController::Backup);
  EXPECT_THAT(bench.events(0), HasSubstr(none));
  doChooseDrive(2);
  EXPECT_THAT(bench.events(0), HasSubstr("Device mode:  Single-drive (E:)\n"));
}

}  // namespace
}  // namespace korvenal::test
