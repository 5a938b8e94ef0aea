#include "core/Settings.h"

#include <gtest/gtest.h>

#include "core/frmDefault.h"
#include "support/Workbench.h"

namespace korvenal::test {

class SettingsTest : public testing::Test {
 protected:
  void store(const std::string& content) {
    bench_.folder.write("app/KORVEN2.dat", content);
    bench_.settings.doReadInitData();
  }

  Workbench bench_;
  Settings& settings_ = bench_.settings;
};

TEST_F(SettingsTest, OnlyUpperBoundsAreMended) {
  store("[Backup]\nSplitSize=13\nSplitSize2=15\nFileSystem=2\n[Restore]\nDefault=4\n");
  EXPECT_EQ(settings_.SplitSize, 2);
  EXPECT_EQ(settings_.SplitSize2, 5);
  EXPECT_EQ(settings_.FileSystem, 0);
  EXPECT_EQ(settings_.Default, 1);
  store("[Backup]\nSplitSize=12\nSplitSize2=-3\nFileSystem=1\n[Restore]\nDefault=3\n");
  EXPECT_EQ(settings_.SplitSize, 12);
  EXPECT_EQ(settings_.SplitSize2, -3);
  EXPECT_EQ(settings_.FileSystem, 1);
  EXPECT_EQ(settings_.Default, 3);
}

TEST_F(SettingsTest, WhatIsSavedIsReadBack) {
  settings_.doReadInitData();
  settings_.PlaySound = false;
  settings_.SplitFile = settings_.Finalize = settings_.SystemTray = true;
  settings_.ExcludeTopFolder = settings_.SkipSystem = false;
  settings_.SplitSize2 = 14;
  settings_.MainWin.Left = -120;
  settings_.doSaveInitData();

  Settings again(bench_.profile);
  again.doReadInitData();
  EXPECT_FALSE(again.PlaySound);
  EXPECT_TRUE(again.SplitFile && again.Finalize && again.SystemTray);
  EXPECT_FALSE(again.ExcludeTopFolder || again.SkipSystem);
  EXPECT_TRUE(again.ExcludeEmptyFolder && again.SkipOpen);
  EXPECT_EQ(again.SplitSize2, 14);
  EXPECT_EQ(again.MainWin.Left, -120);
}

TEST_F(SettingsTest, DefaultOptionsChangeNothingBeforeOk) {
  store("[Backup]\nFinalize=1\nSplitSize=7\nSplitSize2=-1\n");
  frmDefault cancelled(settings_, bench_.desktop);
  EXPECT_EQ(cancelled.FileSize, 7);
  EXPECT_EQ(cancelled.DiscSize, 5) << "an index outside the list";
  cancelled.pbDefault();
  cancelled.pbCancel();
  EXPECT_TRUE(cancelled.isClosed());
  EXPECT_TRUE(settings_.Finalize);

  frmDefault reset(settings_, bench_.desktop);
  reset.pbDefault();
  reset.pbOK();
  Settings stored(bench_.profile);
  stored.doReadInitData();
  EXPECT_FALSE(stored.Finalize);
  EXPECT_EQ(stored.SplitSize, 2);
  EXPECT_EQ(stored.SplitSize2, 5);
}

}  // namespace korvenal::test
