#include <gtest/gtest.h>

#include <random>

#include "platform/Text.h"
#include "restore/IndexFilling.h"
#include "restore/IndexLines.h"
#include "restore/RestoreFind.h"
#include "restore/RestoreSelection.h"
#include "support/ScriptedDesktop.h"

namespace korvenal::test {
namespace {

struct Selecting {
  ScriptedDesktop desktop;
  RestorePage page{desktop};
  RestoreSelection selection{page, desktop};
  RestoreFind find{page, desktop};

  explicit Selecting(const std::string& text) {
    IndexText index;
    EXPECT_TRUE(index.load(text));
    fillRestoreTree(index, page.vsRestore, [](int, int) {});
  }
  std::string states() const {
    std::string text;
    for (int row = 1; row < page.vsRestore.Rows(); ++row)
      text += std::to_string(static_cast<int>(page.vsRestore.check(row)));
    return text;
  }
  std::string totals() const {
    return std::to_string(page.SelectedCount) + "/" + std::to_string(page.SelectedFiles) + "/" +
           page.SelectedBytes.toText();
  }
};

/// The rules of propagation as they are told, row by row on the texts of the columns.
class SlowModel {
 public:
  explicit SlowModel(const RestoreTree& tree) : tree_(tree) {
    states.assign(static_cast<std::size_t>(tree.Rows()), 2);
  }

  std::vector<int> states;

  void click(int row) {
    const int state = at(row) == 1 ? 2 : 1;
    at(row) = state;
    if (!tree_.text(row, RestoreSelf).empty())
      for (int r = row + 1; r < tree_.Rows() && tree_.level(r) > tree_.level(row); ++r)
        at(r) = state;
    for (int r = row, s = state; tree_.level(r) > 0;) {
      s = siblingDiffers(r, s, -1) || (s != 5 && siblingDiffers(r, s, 1)) ? 5 : s;
      r = std::stoi(tree_.text(r, RestoreParent));
      if (r == 0) return;
      at(r) = s;
    }
  }
  void invert() {
    for (int& state : states)
      if (state != 5) state = 3 - state;
    states[0] = 2;
  }
  std::string totals() const {
    int count = 0, files = 0;
    Fixed4 bytes;
    for (int row = 1; row < tree_.Rows(); ++row) {
      if (states[static_cast<std::size_t>(row)] != 1) continue;
      ++count;
      if (tree_.text(row, RestoreSize).empty()) continue;
      ++files;
      bytes += Fixed4::parse(tree_.cellData(row, RestoreSize));
    }
    return std::to_string(count) + "/" + std::to_string(files) + "/" + bytes.toText();
  }
  std::string text() const {
    std::string all;
    for (std::size_t row = 1; row < states.size(); ++row) all += std::to_string(states[row]);
    return all;
  }

 private:
  int& at(int row) { return states[static_cast<std::size_t>(row)]; }
  bool siblingDiffers(int row, int state, int step) {
    const int level = tree_.level(row);
    for (int r = row + step; r > 0 && r < tree_.Rows() && tree_.level(r) >= level; r += step)
      if (tree_.level(r) == level && at(r) != state) return true;
    return false;
  }
  const RestoreTree& tree_;
};

/// A random index. Some folders have no line of their own, as a differential backup leaves them.
std::string randomIndex(std::mt19937& random) {
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  IndexLines lines;
  std::vector<std::string> path;
  for (int i = 0, rows = 3 + below(40); i < rows; ++i) {
    while (!path.empty() && below(3) == 0) path.pop_back();
    std::string name = "n";
    name += std::to_string(i);
    for (auto part = path.rbegin(); part != path.rend(); ++part) name = *part + "\\" + name;
    if (below(2) == 0) {
      if (below(8) != 0) lines.folder(name);
      path.push_back("n" + std::to_string(i));
    } else {
      lines.file(name, static_cast<std::size_t>(below(9000)));
    }
  }
  return lines.file("last", 1).text();
}

TEST(Selection, PropagatesLikeTheSlowModelOverRandomTrees) {
  std::mt19937 random(20261122);
  for (int tree = 0; tree < 300; ++tree) {
    Selecting fast(randomIndex(random));
    SlowModel slow(fast.page.vsRestore);
    for (int click = 0; click < 30; ++click) {
      const auto row = 1 + static_cast<int>(random() % (slow.states.size() - 1));
      const bool invert = click % 11 == 10;
      if (invert) {
        fast.selection.pbInvertSelection();
        slow.invert();
      } else {
        fast.selection.doClickRow(row);
        slow.click(row);
      }
      ASSERT_EQ(fast.states(), slow.text()) << "tree " << tree << " click " << click;
      ASSERT_EQ(fast.totals(), slow.totals()) << "tree " << tree << " click " << click;
    }
  }
}

std::string smallTree() {
  return IndexLines()
      .folder("A")
      .folder("A\\B")
      .file("A\\B\\one.txt", 1000)
      .file("A\\B\\Two.TXT", 2000)
      .file("A\\three.jpg", 4000)
      .file("\xC3\xA4rger.txt", 8000)
      .text();
}

TEST(Selection, AControlThatCyclesThroughPartlyLeavesTheTotalsRight) {
  Selecting s(smallTree());
  s.selection.doClickRow(5);
  for (const RestoreCheck state : {RestoreCheck::Partly, RestoreCheck::StillUnchecked}) {
    s.selection.doChangeCheck(2, state);
    EXPECT_EQ(s.states(), "522212");
    EXPECT_EQ(s.totals(), "1/1/4000");
  }
  s.selection.doChangeCheck(1, RestoreCheck::StillChecked);
  EXPECT_EQ(s.totals(), "5/3/7000");
}

TEST(Selection, APatternChecksWhatMatchesAndGathersFolders) {
  Selecting s(smallTree());
  s.selection.doSelectAllRows();
  EXPECT_EQ(s.selection.doSelectMatching("*.txt"), 3);
  EXPECT_EQ(s.states(), "511121");
  EXPECT_EQ(s.selection.doSelectMatching("a"), 1);
  EXPECT_EQ(s.states(), "111112");
  EXPECT_EQ(s.totals(), "5/3/7000");
  EXPECT_EQ(s.page.vsBackupInfo[2], "Restore selected:  3 files, 7 KB.");
}

TEST(Find, ComparesByCaseOrNotAndOpensTheFoldersAbove) {
  Selecting s(smallTree());
  s.selection.pbCollapse();
  EXPECT_TRUE(s.page.vsRestore.isCollapsed(1));
  EXPECT_FALSE(s.find.doFindString("two.txt", true));
  EXPECT_FALSE(s.page.pbFindNextEnabled);
  EXPECT_TRUE(s.find.doFindString("WO.t", false));
  EXPECT_EQ(s.page.vsRestore.Row, 4);
  EXPECT_FALSE(s.page.vsRestore.isCollapsed(1));
  EXPECT_FALSE(s.page.vsRestore.isCollapsed(2));
  EXPECT_TRUE(s.find.doFindString("\xC3\x84RGER", false));
  EXPECT_EQ(s.page.FindRow, 6);
}

TEST(Find, FindsTheSameRowsAsALookAtEveryName) {
  IndexLines lines;
  std::mt19937 random(3);
  const char* const pieces[] = {"IMG_",     "img",      "a",    "\xC3\x9F",
                                "\xD0\xB6", "\xD0\x96", "\xFF", "1"};
  for (int row = 0; row < 20'000; ++row) {
    std::string name = std::to_string(row);
    for (int i = 0; i < 3; ++i) name += pieces[random() % std::size(pieces)];
    lines.file(name, 1);
  }
  Selecting s(lines.text());
  const RestoreTree& tree = s.page.vsRestore;
  for (const char* wanted : {"IMG_1", "img1img_",
                             "\xD0\xB6"
                             "a",
                             "ss1", "1", "19999", "1\n1", "none"}) {
    int next = 0;
    const std::string upper = Text::toUpper(wanted);
    for (int row = 1; row < tree.Rows(); ++row) {
      if (Text::toUpper(tree.name(row)).find(upper) == std::string::npos) continue;
      if (next == 0)
        s.find.doFindString(wanted, false);
      else
        s.find.doFindNext();
      ASSERT_EQ(s.page.FindRow, row) << wanted;
      if (++next == 50) break;
    }
    EXPECT_EQ(next > 0, s.find.doFindString(wanted, false)) << wanted;
  }
}

TEST(Find, FindsTheFirstRowOfEveryBeginningOfATextAsItIsTyped) {
  IndexLines lines;
  for (int row = 0; row < 400; ++row) lines.file("Img " + std::to_string(row * 7 % 400), 1);
  Selecting s(lines.text());
  const RestoreTree& tree = s.page.vsRestore;
  for (const std::string text : {"img 123", "G 39", "MG 1x"}) {
    for (std::size_t length = 1; length <= text.size(); ++length) {
      const std::string typed = text.substr(0, length), upper = Text::toUpper(typed);
      int first = 1;
      while (first < tree.Rows() &&
             Text::toUpper(tree.name(first)).find(upper) == std::string::npos)
        ++first;
      EXPECT_EQ(s.find.doFindString(typed, false), first < tree.Rows()) << typed;
      EXPECT_EQ(s.page.FindRow, first % tree.Rows()) << typed;
      // The place of the search moves on; the first row stays.
      if (length == 1) s.find.doFindNext();
    }
    s.find.doFindString("Img", true);
  }
}

}  // namespace
}  // namespace korvenal::test
