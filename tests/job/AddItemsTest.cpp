#include "job/AddItems.h"

#include <gtest/gtest.h>

#include "job/ItemFacts.h"
#include "job/JobBench.h"
#include "job/frmCreateItem.h"

namespace korvenal::test {

class AddItemsTest : public testing::Test {
 protected:
  JobBench bench_;
  Table& contents_ = bench_.job.vsContents;
};

TEST_F(AddItemsTest, PickedItemsAreFilledIn) {
  const std::string file = bench_.folder.write("a.txt", std::string(1500, 'x'));
  const std::string folder = bench_.folder.makeFolder("pictures");
  EXPECT_EQ(bench_.addItems.doPickItems({file, folder + "/", "/"}), 3U);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("a.txt", "pictures", "root"));
  EXPECT_EQ(bench_.cell(1, ContentsType), "1");
  EXPECT_EQ(bench_.cell(1, ContentsSize), "2 KB");
  EXPECT_EQ(bench_.cell(1, ContentsModified).size(), std::string("yyyy-mm-dd hh:mm").size());
  EXPECT_EQ(contents_.check(1, ContentsSubfolder), Table::Check::None);
  EXPECT_EQ(bench_.cell(2, ContentsPath), bench_.folder / "pictures");
  EXPECT_EQ(contents_.check(2, ContentsSubfolder), Table::Check::Ticked);
  EXPECT_TRUE(bench_.job.Modified);
  EXPECT_FALSE(bench_.state.IgnoreEvents);
  EXPECT_EQ(bench_.state.WorkerMode, 0);
}

TEST_F(AddItemsTest, DuplicatesAreAskedAboutWhateverTheirCase) {
  const std::string first = bench_.folder.write("x/name", "");
  const std::string second = bench_.folder.write("y/name", "");
  const std::string other = bench_.folder.write("y/Name", "");
  const std::string last = bench_.folder.write("y/last", "");
  bench_.desktop.answers = {Answer::Ok, Answer::Cancel};
  EXPECT_EQ(bench_.addItems.doDropItems({first, second, last, other, first}), 4U);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("name", "last"));
  ASSERT_EQ(bench_.desktop.asked.size(), 2U);
  EXPECT_EQ(bench_.desktop.asked[0].text, "name\nItem name duplicated. It will be excluded.");
  EXPECT_EQ(contents_.Row, 1) << "the row of that name is in view";
}

TEST_F(AddItemsTest, WhatNoDiscCanHoldIsToldAndPassedOver) {
  const std::string odd = bench_.folder.write("new\nline", "");
  const std::string fine = bench_.folder.write("fine", "");
  bench_.desktop.answerAllOk = true;
  bench_.addItems.doPickItems({odd, bench_.folder / "missing", fine});
  bench_.addItems.doDropItems({odd});
  EXPECT_THAT(bench_.names(), testing::ElementsAre("fine"));
  ASSERT_EQ(bench_.desktop.asked.size(), 3U);
  EXPECT_EQ(bench_.desktop.asked[0].title, "Unsporrted Format");
  EXPECT_EQ(bench_.desktop.asked[2].title, "Unspported Format");
  EXPECT_EQ(bench_.desktop.asked[2].text,
            bench_.folder / "new\\nline" +
                "\nItem name contains unsupported unicode character. It will be excluded.");
}

TEST_F(AddItemsTest, TheItemAfterTheTenThousandthEndsTheList) {
  for (int i = 1; i < MaxItems; ++i)
    contents_.setText(contents_.addRow(), ContentsName, "item " + std::to_string(i));
  const std::string a = bench_.folder.write("a", ""), b = bench_.folder.write("b", "");
  bench_.desktop.answers = {Answer::Ok};
  EXPECT_EQ(bench_.addItems.doPickItems({a, b}), 1U);
  EXPECT_EQ(contents_.Rows(), MaxItems + 1);
  EXPECT_EQ(bench_.desktop.asked[0].title, "Stop Adding");
  EXPECT_TRUE(bench_.state.StopAction);

  bench_.desktop.files = {bench_.folder.write("list.m3u", "b\n")};
  bench_.addItems.doImportM3U();
  EXPECT_EQ(contents_.Rows(), MaxItems + 2) << "an import goes past the limit";
}

TEST_F(AddItemsTest, AStopLeavesWhatWasAdded) {
  std::vector<std::string> paths;
  for (const char* name : {"a", "b", "c"}) paths.push_back(bench_.folder.write(name, ""));
  bench_.desktop.onYield = [this](int) {
    if (contents_.Rows() == 3) bench_.state.StopAction = true;
  };
  bench_.addItems.doPickItems(paths);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("a", "b"));
}

TEST_F(AddItemsTest, PlayListsNameFilesRelativeToThemselves) {
  const std::string outside = bench_.folder.write("else/two.mp3", "");
  bench_.folder.write("music/one.mp3", "");
  bench_.folder.makeFolder("music/folder");
  const std::string list = bench_.folder.write(
      "music/list.m3u", "\xEF\xBB\xBF#EXTM3U\r\n  one.mp3\tignored\r\n\r\n#EXTINF:1\n" + outside +
                            "\nmissing.mp3\nfolder\none.mp3\nlast.mp3");
  bench_.folder.write("music/last.mp3", "");
  bench_.desktop.files = {list};
  bench_.desktop.answers = {Answer::Ok};
  bench_.addItems.doImportM3U();
  EXPECT_THAT(bench_.names(), testing::ElementsAre("one.mp3", "two.mp3", "last.mp3"));
  EXPECT_EQ(bench_.profile.doReadProfile("Backup", "M3UPath", ""), bench_.folder / "music");
  EXPECT_EQ(bench_.desktop.asked.size(), 1U) << "the second one.mp3";

  bench_.desktop.files = {bench_.folder.write("empty.m3u", "")};
  bench_.desktop.answers = {Answer::Ok};
  bench_.addItems.doImportM3U();
  EXPECT_EQ(bench_.desktop.asked.back().text, "M3U file format error!");
}

TEST_F(AddItemsTest, PlayListsMayNameTheirFilesInLatin1) {
  for (const char* name : {"Mädchen.mp3", "Öl/Straße.mp3", "both.mp3"})
    bench_.folder.write(std::string("music/") + name, "x");
  const std::string list = bench_.folder.write(
      "lists/far.m3u",
      "#EXTM3U\r\n#EXTINF:123,Somebody - M\xE4"
      "dchen\r\n../music/M\xE4"
      "dchen.mp3\r\n" +
          (bench_.folder / "music/") +
          "\xD6l/Stra\xDF"
          "e.mp3\r\n" +
          "../music/Mädchen.mp3\r\n" +
          "../music/both.mp3  \r\n../music/\xE4missing.mp3\r\nC:\\music\\both.mp3\r\n");
  bench_.desktop.files = {list};
  bench_.desktop.answers = {Answer::Ok};
  EXPECT_TRUE(bench_.addItems.doImportM3U());
  EXPECT_THAT(bench_.names(), testing::ElementsAre("Mädchen.mp3", "Straße.mp3", "both.mp3"));
  EXPECT_EQ(bench_.cell(2, ContentsPath), bench_.folder / "music/Öl/Straße.mp3");
  EXPECT_EQ(bench_.desktop.asked.size(), 1U) << "both readings name one file";
  EXPECT_FALSE(bench_.state.IgnoreEvents);
}

TEST_F(AddItemsTest, ItemsMadeByHandAreChecked) {
  bench_.add("Taken", "/taken");
  struct Case {
    int type;
    const char* name;
    const char* source;
    const char* message;
  };
  const Case cases[] = {
      {0, " TAKEN ", "/x", "Item name duplicated with existing item."},
      {1, "a", "relative", "Invalid path format."},
      {0, "a.txt", "/data/x.txt/",
       "Invalid file path format. There should be no ' / ' at the end of the path."},
      {0, "a.txt", "/data/x", "Invalid file path. Please add original file name to the path."},
  };
  for (const Case& one : cases) {
    bench_.desktop.answers = {Answer::Ok};
    frmCreateItem form(bench_.addItems, bench_.job, bench_.desktop);
    form.TypeOpt = one.type;
    form.setName(one.name);
    form.setSource(one.source);
    form.pbOK();
    EXPECT_FALSE(form.isClosed());
    EXPECT_EQ(bench_.desktop.asked.back().text, one.message);
    const bool isName = form.focus == frmCreateItem::Field::Name;
    EXPECT_EQ(bench_.desktop.asked.back().title, isName ? "Name Error" : "Path Error");
  }
  frmCreateItem form(bench_.addItems, bench_.job, bench_.desktop);
  form.setSource("/x");
  for (const char* name : {"  ", "..", "\xff"}) {
    form.setName(name);
    EXPECT_FALSE(form.isOkEnabled()) << name;
  }
  form.setName("a/b:c.d\n");
  form.TypeOpt = 0;
  form.setSource(bench_.folder.makeFolder("is.folder"));
  form.pbOK();
  EXPECT_TRUE(form.isClosed());
  EXPECT_EQ(bench_.cell(2, ContentsName), "abc.d");
  EXPECT_EQ(bench_.cell(2, ContentsType), "0") << "what lies there decides";
  EXPECT_EQ(contents_.check(2, ContentsSubfolder), Table::Check::Ticked);
}

}  // namespace korvenal::test
