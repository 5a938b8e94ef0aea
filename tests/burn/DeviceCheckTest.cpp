#include "burn/DeviceCheck.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

struct OneDevice : MountedDevices {
  std::string devicePath(char letter) override {
    return letter == 'V' ? "IMAGE#CDROM&VEN_Image&PROD_Drive_1&REV_1#V" : "";
  }
};

TEST(DeviceCheck, TheSettingsAreOfferedOnceAndThenTheAnswerStands) {
  BurnWorld world;
  OneDevice devices;
  DriveDiscovery drives(world.engine, devices, world.desktop, world.state, world.devices);
  DeviceCheck check(world.state, world.desktop, drives, world.devices, world.job);
  int opened = 0;
  int refreshed = 0;
  std::string chosen = "V:";
  check.actions = {.doDevice = [&] { world.devices.DriveLetters = chosen, ++opened; },
                   .doRefreshSummary = [&] { ++refreshed; }};
  EXPECT_TRUE(check.doEnsureDevice(false));
  EXPECT_EQ(opened, 0);

  world.devices.DriveLetters = "W:";
  EXPECT_TRUE(check.doEnsureDevice(true)) << "mended in the settings";
  EXPECT_EQ(refreshed, 1);

  world.devices.DriveLetters = chosen = "W:";
  EXPECT_FALSE(check.doEnsureDevice(true));
  EXPECT_EQ(refreshed, 1);

  chosen.clear();
  world.desktop.answers = {Answer::Ok};
  EXPECT_FALSE(check.doEnsureDevice(true));
  EXPECT_EQ(world.desktop.asked.back().text, "Drive not ready, unable to run the action.");
  EXPECT_FALSE(world.state.IgnoreEvents);
}

}  // namespace
}  // namespace korvenal::test
