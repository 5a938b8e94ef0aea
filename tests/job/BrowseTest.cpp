#include <gtest/gtest.h>

#include "job/JobBench.h"
#include "job/frmBrowse.h"

namespace korvenal::test {

class BrowseTest : public testing::Test {
 protected:
  BrowseTest() {
    for (const char* name : {"b.txt", "a.txt", "Z.txt"}) bench_.folder.write(name, "");
    bench_.folder.makeFolder("pictures");
    bench_.profile.doWriteProfile("Browser", "Default", bench_.folder / "");
  }
  frmBrowse::Services services() {
    return {bench_.desktop, bench_.files, bench_.profile, bench_.addItems, size_};
  }
  std::vector<std::string> shown(const frmBrowse& form) const {
    std::vector<std::string> names;
    for (const auto& entry : form.entries())
      names.push_back(std::string(entry.ticked ? "+" : "").append(entry.name));
    return names;
  }

  JobBench bench_;
  BrowserSize size_;
};

TEST_F(BrowseTest, TicksCountAndHoldForTheFolderInView) {
  frmBrowse form(services(), bench_.workspace.homeFolder);
  const std::size_t entries = form.entries().size();
  ASSERT_GE(entries, 4U);
  EXPECT_TRUE(form.entries()[0].isFolder()) << "folders come first";
  EXPECT_FALSE(form.isAddEnabled());
  form.doTick(1, true);
  form.doTick(1, true);
  form.doTick(entries, true);
  EXPECT_EQ(form.tickedCount(), 1U);
  EXPECT_EQ(form.SelectAll(), frmBrowse::Ticks::Some);
  form.doSelectAll(true);
  EXPECT_EQ(form.SelectAll(), frmBrowse::Ticks::All);
  EXPECT_FALSE(form.doShowFolder(bench_.folder / "a.txt"));
  EXPECT_EQ(form.tickedCount(), entries) << "what is no folder changes nothing";
  EXPECT_TRUE(form.doShowFolder(bench_.folder / "pictures/"));
  EXPECT_EQ(form.tickedCount(), 0U);
  EXPECT_EQ(form.SelectAll(), frmBrowse::Ticks::None) << "an empty folder is not ticked";
  form.doShowParent();
  EXPECT_EQ(form.entries().size(), entries);
}

TEST_F(BrowseTest, WhatAStopLeavesOverStaysTicked) {
  bench_.folder.makeFolder("pick");
  for (const char* name : {"pick/a", "pick/b", "pick/c"}) bench_.folder.write(name, "");
  bench_.add("a", "/elsewhere/a");
  frmBrowse form(services(), bench_.workspace.homeFolder);
  ASSERT_TRUE(form.doShowFolder(bench_.folder / "pick"));
  form.doSelectAll(true);
  bench_.state.IgnoreEvents = true;  // as while the browser is open
  bench_.desktop.answers = {Answer::Cancel};
  form.CMD(frmBrowse::AddCommand);
  EXPECT_THAT(shown(form), testing::ElementsAre("a", "+b", "+c")) << "the refused one is handled";
  EXPECT_TRUE(form.entries()[0].handled);
  EXPECT_EQ(form.SelectAll(), frmBrowse::Ticks::Some);
  EXPECT_TRUE(bench_.state.IgnoreEvents) << "the browser is still open";
  form.CMD(frmBrowse::AddCommand);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("a", "b", "c"));
  EXPECT_FALSE(form.isAddEnabled());
}

TEST_F(BrowseTest, AListingThatALaterOneOvertakesIsDropped) {
  frmBrowse form(services(), bench_.workspace.homeFolder);
  bool nested = false;
  bench_.desktop.onYield = [&](int) {
    if (nested) return;
    nested = true;
    form.doShowFolder(bench_.folder / "pictures");
  };
  form.doShowFolder(bench_.folder / "");
  EXPECT_EQ(form.folder(), bench_.folder / "pictures");
  EXPECT_TRUE(form.entries().empty());
}

}  // namespace korvenal::test
