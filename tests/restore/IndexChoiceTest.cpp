#include <gtest/gtest.h>

#include "restore/RestoreRig.h"

namespace korvenal::test {
namespace {

/// Two indexes on a disc, of which the form is to choose one.
void loadTwoIndexes(RestoreRig& rig) {
  rig.discs.contents["Backup #1"] = {
      {"_KORVEN{A(2026-11-22-10-00-F)}.bdx", IndexLines().file("a", 1).text()},
      {"_KORVEN{B(2026-11-22-11-00-D)}.bdx", IndexLines().file("b", 1).text()}};
  rig.insertDisc(1);
  rig.desktop.answers = {Answer::No};
}

TEST(IndexChoice, EventsAreIgnoredForItsTimeAndAsBeforeAfterwards) {
  for (const bool before : {false, true}) {
    RestoreRig rig;
    loadTwoIndexes(rig);
    rig.state.IgnoreEvents = before;
    bool during = false;
    rig.desktop.onForm = [&](Form& form) {
      during = rig.state.IgnoreEvents;
      dynamic_cast<frmReadLog&>(form).doOpenRow(2);
    };
    EXPECT_TRUE(rig.opening.doReadBackupIndex(false));
    EXPECT_TRUE(during);
    EXPECT_EQ(rig.state.IgnoreEvents, before);
    EXPECT_EQ(rig.page.setName, "B (2026-11-22-11-00-D)");
  }
}

TEST(IndexChoice, WhatCannotBeOpenedLeavesTheIndexAtHand) {
  RestoreRig rig;
  loadTwoIndexes(rig);
  rig.discs.contents["Backup #1"].begin()->second = "no index";
  rig.desktop.onForm = [](Form& form) { dynamic_cast<frmReadLog&>(form).doOpenRow(2); };
  ASSERT_TRUE(rig.opening.doReadBackupIndex(false));
  const std::string path = rig.page.IndexPath;
  EXPECT_TRUE(path.ends_with("\\_KORVEN{B(2026-11-22-11-00-D)}.bdx")) << path;
  rig.desktop.onForm = [](Form& form) { dynamic_cast<frmReadLog&>(form).doOpenRow(1); };
  rig.desktop.answers = {Answer::Ok};
  EXPECT_FALSE(rig.opening.doReadBackupIndex(false));
  EXPECT_EQ(rig.page.IndexPath, path);
  EXPECT_EQ(rig.page.IndexName, "_KORVEN{B(2026-11-22-11-00-D)}.bdx");
  EXPECT_TRUE(rig.page.IsDifferential);
  EXPECT_EQ(rig.page.identity.text(), "20261122100000-D Photos");
}

}  // namespace
}  // namespace korvenal::test
