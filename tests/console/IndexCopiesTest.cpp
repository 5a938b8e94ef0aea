#include <algorithm>
#include <filesystem>
#include <fstream>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"
#include "plan/Plan.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

/// The index on the discs of a set: whichever of them is left tells what all of them hold.
class IndexCopies : public ConsoleFixture {
 protected:
  /// Two CDs: a.bin is cut, and the end of it lies on disc 2 with z.txt.
  void writeTwoDiscs() {
    temp.sparse("source/a.bin", 735'000'000);
    temp.write("source/z.txt", "the end");
  }
  std::string backupTo(const std::string& tsv) const {
    std::string script = backup("");
    script.replace(script.rfind("backup\n"), 7, "backup --tsv " + tsv + "\n");
    return script;
  }
  /// The image that bears this number of a disc in its name.
  std::string imageOf(int disc) const {
    for (const auto& entry : fs::directory_iterator(temp / "app/Discs"))
      if (entry.path().native().ends_with("disc 0" + std::to_string(disc) + ".iso"))
        return entry.path();
    return {};
  }
  /// The lines of the index on a disc, without its header; empty when there is none of the name.
  std::vector<std::string> indexOn(int disc, const std::string& name) const {
    const std::string packed = temp / "index.zip", plain = temp / "index.txt";
    fs::remove(packed);
    runProgram({"xorriso", "-report_about", "FATAL", "-osirrox", "on", "-indev",
                "stdio:" + imageOf(disc), "-extract_single", "/" + name, packed},
               temp / "printed");
    if (!fs::exists(packed)) return {};
    runProgram({"unzip", "-p", "-P", "ZEPHOR", packed}, plain);
    std::string text = test::TempDir::read(plain);
    std::erase(text, '\r');
    auto lines = Text::split(text, '\n');
    lines.erase(lines.begin());
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
  }
  /// Each disc bears an index that equals the plan.
  void expectIndexes(const std::string& tsv, int discs) const {
    std::string name = test::TempDir::read(tsv);
    name.erase(0, name.find("_KORVEN{"));
    name.erase(name.find('\t'));
    for (int disc = 1; disc <= discs; ++disc) EXPECT_EQ(indexOn(disc, name), indexOf(tsv)) << disc;
  }
  /// The same lines, as the exported plan has them.
  static std::vector<std::string> indexOf(const std::string& tsv) {
    std::vector<std::string> lines;
    for (const std::string& row : Text::split(test::TempDir::read(tsv), '\n')) {
      const auto cells = Text::split(row, '\t');
      if (cells.size() < PlanColumns || cells[PlanType] == "5") continue;
      std::string line;
      for (const int column : IndexedPlanColumns)
        line += (column == PlanFlag ? "" : "\t") + cells[static_cast<std::size_t>(column)];
      lines.push_back(line);
    }
    lines.erase(lines.begin());  // of the index itself
    return lines;
  }
  /// When the line is printed, nothing can be written below the temporary folder any more.
  void spoilScratchAt(const std::string& line) {
    whenPrinted.push_back({line, [this] {
                             fs::remove_all(temp / "scratch");
                             std::ofstream(temp / "scratch") << "in the way";
                           }});
  }
};

TEST_F(IndexCopies, EachDiscHasOneAndAnyOfThemOpensTheSet) {
  writeTwoDiscs();
  const std::string tsv = temp / "plan.tsv";
  ASSERT_EQ(run(backupTo(tsv)).code, ExitCode::Ok);
  expectIndexes(tsv, 2);

  const std::string lost = imageOf(1);
  fs::rename(lost, temp / "lost.iso");
  const Outcome outcome =
      run("disc insert V '" + imageOf(2) + "'\nindex\nselect z.txt\nrestore " + target);
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(test::TempDir::read(target + "/z.txt"), "the end") << outcome.out;
}

TEST_F(IndexCopies, TheOwnOneOfADiscTellsWhatChangedBeforeItWasBurned) {
  writeTwoDiscs();
  whenPrinted = {
      {"Burning backup disc #2...", [this] { temp.write("source/z.txt", "rewritten"); }}};
  const std::string tsv = temp / "plan.tsv";
  Outcome outcome = run(backupTo(tsv));
  ASSERT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  whenPrinted.clear();
  for (const int disc : {1, 2}) {
    outcome = run("disc insert V '" + imageOf(disc) +
                  "'\nindex\nselect none\nselect z.txt\nlist z.txt\n" + "restore " + target +
                  " --mode 0");
    EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
    EXPECT_EQ(test::TempDir::read(target + "/z.txt"), "rewritten");
    const auto told = HasSubstr("Files of backup disc #2 had changed when it was burned");
    if (disc == 1)
      EXPECT_THAT(outcome.out, told);
    else
      EXPECT_THAT(outcome.out, Not(told)) << "the index opened is that of the disc";
    fs::remove(target + "/z.txt");
  }
}

TEST_F(IndexCopies, OneThatIsGoneBeforeTheFirstDiscIsWrittenAnew) {
  temp.write("source/a.txt", "text");
  const std::string tsv = temp / "plan.tsv";
  for (const std::string line : {"Disc required:", "Collecting disc track information..."}) {
    whenPrinted = {{line, [this] {
                      fs::remove_all(temp / "scratch");
                      temp.makeFolder("scratch");
                    }}};
    fs::remove_all(temp / "app/Discs");
    const Outcome outcome = run(backupTo(tsv));
    ASSERT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
    expectIndexes(tsv, 1);
  }
}

TEST_F(IndexCopies, WithoutOneNothingIsBurnedUnlessAPersonSaysSo) {
  temp.write("source/a.txt", "text");
  for (const std::string line : {"Disc required:", "Collecting disc track information..."}) {
    whenPrinted.clear();
    spoilScratchAt(line);
    Outcome outcome = run(backup(""));
    EXPECT_EQ(outcome.code, ExitCode::Failed) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("Do you want to burn the discs without it?\n  [No]"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("Allocating data buffer...")));
    fs::remove(temp / "scratch");

    outcome = run("answer Yes\n" + backup(""));
    EXPECT_EQ(outcome.code, ExitCode::Failed) << "the set is without its index";
    EXPECT_THAT(outcome.out, HasSubstr("Allocating data buffer..."));
    EXPECT_THAT(test::TempDir::read(imageOf(1)), Not(HasSubstr(".bdx")));
    fs::remove(temp / "scratch");
    fs::remove_all(temp / "app/Discs");
  }
}

}  // namespace
}  // namespace korvenal::console
