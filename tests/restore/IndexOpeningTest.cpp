#include <gtest/gtest.h>

#include <random>

#include "restore/IndexLines.h"
#include "restore/RestoreRig.h"

namespace korvenal::test {
namespace {

std::vector<std::string> texts(const RestoreTree& tree, int row) {
  std::vector<std::string> all;
  for (int column = 0; column < RestoreColumns; ++column) all.push_back(tree.text(row, column));
  return all;
}

TEST(Filling, GivesEveryKindOfRowItsColumns) {
  RestoreRig rig;
  IndexLines lines;
  lines.job = "Photos\\* ann ";
  lines.discs = 3;
  lines.line({"1", "_RestoreKit_Installer.exe", "", "9", "2", IndexLines::Date, "", "", "", "1"});
  ++lines.files;
  lines.folder("A", 1)
      .folder("A\\short-000001-ng", 1)
      .file("A\\short-000001-ng\\x.jpg", 2048, 1, "A\\very long\\x.jpg")
      .split("A\\film", 3000, {2, 2, 3})
      .file("noext", 0, 3);
  rig.open(lines.text());
  const RestoreTree& tree = rig.page.vsRestore;
  using Row = std::vector<std::string>;
  ASSERT_EQ(tree.Rows(), 6);
  EXPECT_EQ(texts(tree, 1),
            (Row{"A", "1-3", "", "Folder", "2024-02-29 13:45", "1", "0", "1", "1", "1", "3"}));
  EXPECT_EQ(texts(tree, 3), (Row{"x.jpg", "1", "2 KB", "JPG File", "2024-02-29 13:45", "2", "2", "",
                                 "1", "1", "1"}));
  EXPECT_EQ(texts(tree, 4),
            (Row{"film", "2-3", "3 KB", "File", "2024-02-29 13:45", "3", "1", "", "2", "2", "3"}));
  EXPECT_EQ(texts(tree, 5),
            (Row{"noext", "3", "0 KB", "File", "2024-02-29 13:45", "2", "0", "", "3", "3", "3"}));
  EXPECT_EQ(tree.cellData(3, RestoreName), "A\\short-000001-ng\\x.jpg");
  EXPECT_EQ(tree.cellData(3, RestoreDisc), "A\\very long\\x.jpg");
  EXPECT_EQ(tree.cellData(4, RestoreKindColumn), "3");
  EXPECT_EQ(tree.cellData(4, RestoreItemDisc), "002002003");
  EXPECT_EQ(tree.partOnDisc(4, 2), "A\\film\\film.002");
  EXPECT_EQ(rig.page.txJobName, "Photos");
  EXPECT_EQ(rig.page.setName, "Photos (2026-11-22-10-00-F)");
  EXPECT_EQ(rig.page.vsBackupIndex, "Backup index of \"Photos\"");
  EXPECT_EQ(rig.page.vsBackupInfo[0], "Full backup:  3 discs, 3 files, 1 file split, 5 KB.");
  EXPECT_EQ(rig.page.vsBackupInfo[1], "Backup created by:  ann, Backup time: 2026-11-22 10:00");
}

TEST(Filling, KeepsOddNumbersWithinBounds) {
  RestoreRig rig;
  rig.open(IndexLines()
               .line({"2", "a", "", "-5", "2", "2024", "", "", "", "0"})
               .line({"2", "b\\", "", "99999999999999999999999", "3", "", "88888888888", "-3",
                      "777777", "x"})
               .line({"2", "c", "", "1", "9", "", "", "", "", "1"})
               .line({"2", "\\", "", "1", "1", "", "", "", "", "1"})
               .text());
  const RestoreTree& tree = rig.page.vsRestore;
  ASSERT_EQ(tree.Rows(), 3);
  EXPECT_EQ(tree.item(1).size, Fixed4());
  EXPECT_EQ(tree.item(1).disc, 1);
  EXPECT_EQ(tree.text(1, RestoreModified), "");
  EXPECT_EQ(tree.item(2).parts, static_cast<unsigned>(RestoreTree::MaxParts));
  EXPECT_EQ(tree.text(2, RestoreDisc), "1-999");
  EXPECT_EQ(tree.partDisc(2, 1), 0);
}

TEST(Filling, EndsAtFoldersNestedTooDeeplyAndTellsIt) {
  RestoreRig rig;
  IndexLines lines;
  std::string path = "d";
  for (int level = 0; level < 300; ++level, path += "\\d") lines.folder(path);
  rig.desktop.answers = {Answer::Ok};
  rig.open(lines.text());
  EXPECT_EQ(rig.page.vsRestore.Rows(), 257);
  EXPECT_EQ(rig.desktop.asked.at(0).text, "Backup index file format error.");

  std::string million;
  for (int level = 0; level < 1'000'000; ++level) million += "d\\";
  RestoreRig other;
  other.desktop.answers = {Answer::Ok};
  other.open(IndexLines().folder("e").folder(million + "d").file(million + "f", 1).text());
  EXPECT_EQ(other.page.vsRestore.Rows(), 2);
  EXPECT_EQ(other.desktop.asked.at(0).text, "Backup index file format error.");
}

TEST(Reading, RefusesWhatIsNoIndex) {
  const std::string good = IndexLines().file("a", 1).text();
  const std::string bad[] = {
      "",
      "\n\n\n",
      IndexLines().text(),                             // no data
      IndexLines().text() + "\t\t\t\t\t\t\t\t\t\r\n",  // dropped: nothing is left
      good.substr(1),                                  // stamp
      good.substr(0, good.size() - 8),                 // cut off
      good + "2\tb\t\t1\t2\t\t\t\t\t1\tmore\r\n",      // too many fields
      std::string(100000, '\t'),
      "PK\3\4 no archive for all that",
  };
  for (const std::string& text : bad) {
    RestoreRig rig;
    rig.desktop.answers = {Answer::Ok};
    EXPECT_FALSE(rig.opening.doOpenIndexFile(rig.folder.write("x.bdx", text))) << text;
    ASSERT_EQ(rig.desktop.asked.size(), 1U) << text;
    EXPECT_EQ(rig.desktop.asked[0].text, "Backup index file format error.");
    EXPECT_EQ(rig.desktop.asked[0].title, "Error");
  }
}

TEST(Reading, SplitsAtLineFeedsAndTabsOnly) {
  RestoreRig rig;
  std::string text = IndexLines().file("a\xE2\x80\xA8\x0C\x0B.txt", 1).file("b", 1).text();
  text.erase(text.rfind('\r'), 1);
  rig.open(text + "\n");  // an empty last line does not count
  ASSERT_EQ(rig.page.vsRestore.Rows(), 3);
  EXPECT_EQ(rig.page.vsRestore.name(1), "a\xE2\x80\xA8\x0C\x0B.txt");
  EXPECT_EQ(rig.page.vsRestore.name(2), "b");
}

TEST(Reading, AnArchiveIsUnpackedAndItsEntryTellsTheType) {
  RestoreRig rig;
  const std::string name = "_KORVEN{Photos(2026-11-22-10-00-D)}.bdx";
  const std::string text = rig.folder.write(name, IndexLines().file("a", 1).text());
  ASSERT_EQ(rig.archive.compress(rig.folder / "zip", text, IndexPassword, {}), 0);
  rig.desktop.answers = {Answer::No};
  EXPECT_TRUE(rig.opening.doOpenIndexFile(rig.folder / "zip"));
  EXPECT_EQ(rig.page.vsRestore.Rows(), 2);
  EXPECT_TRUE(rig.page.IsDifferential);
  EXPECT_TRUE(rig.files.listFolder(rig.workspace.TempFolder).empty());
}

TEST(Reading, ADamagedOrSwollenArchiveIsRefusedAndLeavesNothing) {
  RestoreRig rig;
  const auto packed = [&rig](const std::string& text, const std::string& password) {
    rig.folder.write("text", text);
    EXPECT_EQ(rig.archive.compress(rig.folder / "zip", rig.folder / "text", password, {}), 0);
    return TempDir::read(rig.folder / "zip");
  };
  const std::string good = IndexLines().file("a", 1).text();
  const std::string zip = packed(good, IndexPassword);
  std::string flipped = zip;
  flipped[zip.size() / 3] ^= 0x10;
  std::string swollen = good;
  swollen.resize(40 << 20, '\t');
  const std::string bad[] = {zip.substr(0, 4),
                             zip.substr(0, zip.size() / 2),
                             zip.substr(0, zip.size() - 1),
                             flipped,
                             packed(good, "another"),
                             packed(std::string(100'000, '\0'), IndexPassword),
                             packed(swollen, IndexPassword)};
  for (const std::string& bytes : bad) {
    SCOPED_TRACE(&bytes - bad);
    rig.desktop.asked.clear();
    rig.desktop.answers = {Answer::Ok};
    EXPECT_FALSE(rig.opening.doOpenIndexFile(rig.folder.write("x.bdx", bytes)));
    ASSERT_EQ(rig.desktop.asked.size(), 1U);
    EXPECT_EQ(rig.desktop.asked[0].text, "Backup index file format error.");
    EXPECT_TRUE(rig.files.listFolder(rig.workspace.TempFolder).empty());
  }
}

TEST(Reading, AnArchiveOnADiscIsReadInPiecesBetweenYields) {
  RestoreRig rig;
  IndexLines lines;
  std::mt19937 random(5);
  for (int i = 0; i < 60'000; ++i)
    lines.file(std::to_string(random()) + std::to_string(random()), 1);
  const std::string text = rig.folder.write("text-F)}.bdx", lines.text());
  ASSERT_EQ(rig.archive.compress(rig.folder / "zip", text, IndexPassword, {}), 0);
  rig.discs.contents["Backup #1"] = {{"i.bdx", TempDir::read(rig.folder / "zip")}};
  rig.insertDisc(1);
  EXPECT_EQ(rig.archive.entryName("V:\\i.bdx"), "text-F)}.bdx");
  int pumps = 0;
  EXPECT_EQ(rig.archive.extract("V:\\i.bdx", rig.folder / "out", IndexPassword, 1 << 30,
                                [&pumps] { ++pumps; }),
            0);
  EXPECT_GT(pumps, 2);
  EXPECT_EQ(TempDir::read(rig.folder / "out"), lines.text());
}

constexpr const char* First = "_KORVEN{Ph}(;)(2026-11-22-10-00-F)}.bdx";

TEST(Searching, OpensTheOneIndexInTheRootsOfTheDrives) {
  RestoreRig rig;
  rig.discs.contents["Backup #1"] = {{First, IndexLines().file("a", 1).text()},
                                     {"sub\\" + std::string(First), "not looked at"},
                                     {"_KORVEN{x}.bdx", "no stamp"}};
  rig.insertDisc(1);
  rig.desktop.answers = {Answer::Yes};
  EXPECT_TRUE(rig.opening.doReadBackupIndex(false));
  EXPECT_EQ(rig.page.IndexPath, "V:0\\" + std::string(First));
  EXPECT_EQ(rig.page.setName, "Ph}(;) (2026-11-22-10-00-F)");
  EXPECT_EQ(rig.page.SelectedFiles, 1);
  EXPECT_EQ(rig.desktop.asked.at(0).text, "Do you want to restore all backup items?");
  EXPECT_FALSE(rig.page.IndexLoading);
  EXPECT_FALSE(rig.state.ActionRunning);
}

TEST(Searching, AsksForTheFirstDiscOnceWhenQuiet) {
  RestoreRig rig;
  rig.discs.contents["Backup #1"] = {{First, IndexLines().file("a", 1).text()}};
  rig.onPrompt = [&rig](int, const DiscRequest& request) {
    EXPECT_TRUE(request.FirstPrompt);
    EXPECT_EQ(rig.state.WorkerMode, WorkerReadIndex);
    rig.insertDisc(1);
  };
  rig.desktop.answers = {Answer::No};
  EXPECT_TRUE(rig.opening.doReadBackupIndex(true));
  EXPECT_EQ(rig.prompts.size(), 1U);

  RestoreRig without;
  without.onPrompt = [](int, const DiscRequest&) {};
  without.desktop.answers = {Answer::Ok};
  EXPECT_FALSE(without.opening.doReadBackupIndex(true));
  EXPECT_EQ(without.desktop.asked.at(0).text, "Backup index file not found in drive (V:).");
}

}  // namespace
}  // namespace korvenal::test
