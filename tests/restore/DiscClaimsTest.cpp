#include <gtest/gtest.h>

#include "platform/FaultList.h"
#include "restore/RestoreRig.h"

namespace korvenal::test {
namespace {

using Rows = std::vector<std::string>;

constexpr const char* ListName = "_KORVEN{Photos(2026-11-22-10-00-F)}.unsaved";

/// A file at the root and one of two pieces, all on disc 1.
void fillClaimedDisc(RestoreRig& rig) {
  rig.discs.contents["Backup #1"] = {
      {"plain", "12345"}, {"film\\film.001", "one"}, {"film\\film.002", "two"}};
  rig.openAll(IndexLines().file("plain", 5).split("film", 6, {1, 1}));
}

TEST(DiscClaims, AListedFileOrPieceIsNotRestored) {
  for (const std::string unsaved : {"plain", "film\\film.002"}) {
    RestoreRig rig;
    fillClaimedDisc(rig);
    rig.discs.contents["Backup #1"][ListName] = *FaultList::format({unsaved}, 2048);
    EXPECT_EQ(rig.run.doStartRestore().faults.files, 1);
    const std::string file = unsaved == "plain" ? "plain" : "film";
    EXPECT_EQ(rig.errors(), Rows{"Backup #1|The file was not saved when this disc was burned.|" +
                                 rig.target(file)});
    EXPECT_EQ(rig.restored("plain"), file == "plain" ? "" : "12345");
  }
}

TEST(DiscClaims, TheListOfARenamedIndexIsFoundByItsDate) {
  RestoreRig rig;
  fillClaimedDisc(rig);
  rig.page.IndexName = "_KORVEN{Mine(2026-11-22-10-00-F)}.bdx";
  rig.discs.contents["Backup #1"][ListName] = *FaultList::format({"plain"}, 2048);
  rig.discs.contents["Backup #1"]["_KORVEN{Photos(2026-11-23-10-00-F)}.unsaved"] =
      *FaultList::format({"film\\film.002"}, 2048);
  EXPECT_EQ(rig.run.doStartRestore().faults.files, 1);
  EXPECT_EQ(rig.restored("plain") + rig.restored("film"), "onetwo");
}

TEST(DiscClaims, AListThatCannotBeReadIsToldAndAnErrorOnly) {
  RestoreRig rig;
  fillClaimedDisc(rig);
  rig.discs.contents["Backup #1"][ListName] = "KORVEN-UNSAVED-1\t1\nplain\nAll other";
  EXPECT_EQ(rig.run.doStartRestore().faults.files, 1);
  EXPECT_EQ(rig.errors(), Rows{"Backup #1|The list of files that were not saved cannot be read.|" +
                               ("V:\\" + std::string(ListName))});
  EXPECT_EQ(rig.restored("plain") + rig.restored("film"), "12345onetwo");
}

TEST(DiscClaims, WhatMayBePaddingReplacesNothing) {
  RestoreRig rig;
  fillClaimedDisc(rig);
  rig.discs.contents["Backup #1"][ListName] = "cut";
  rig.page.RestoreOpt = ExistingReplaceAll;
  rig.folder.write("target/plain", "a good copy");
  EXPECT_EQ(rig.run.doStartRestore().faults.files, 1);
  EXPECT_EQ(rig.restored("plain") + rig.restored("film"), "a good copyonetwo");
}

TEST(DiscClaims, AFileOfAnotherSizeIsNotTheOneInTheIndex) {
  for (const std::string wrong : {"plain", "film\\film.001", "film\\film.002"}) {
    RestoreRig rig;
    fillClaimedDisc(rig);
    rig.discs.contents["Backup #1"][wrong] = "of another backup";
    EXPECT_EQ(rig.run.doStartRestore().faults.files, 1) << wrong;
    const std::string file = wrong == "plain" ? "plain" : "film";
    EXPECT_EQ(rig.errors(),
              Rows{"Backup #1|The file on disc is not the one in the index.|" + rig.target(file)});
    EXPECT_EQ(rig.restored("plain"), file == "plain" ? "" : "12345");
  }
}

}  // namespace
}  // namespace korvenal::test
