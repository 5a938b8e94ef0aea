#include <gmock/gmock.h>
#include <unistd.h>

#include <sstream>

#include "console/CommandLineOptions.h"
#include "console/LineSource.h"
#include "console/PlanExport.h"
#include "console/RunView.h"
#include "console/Screen.h"
#include "console/TableText.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/LinuxFiles.h"
#include "support/ManualClock.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> readAll(LineSource& lines) {
  std::vector<std::string> all;
  for (std::string line; lines.read("", line) == LineSource::Got::Line;) all.push_back(line);
  return all;
}

TEST(LineSource, GivesLinesHoweverTheyArriveAndTheLastOneWithoutItsEnd) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const std::string text = "one\n\ntwo " + std::string(10000, 'x') + "\nlast";
  ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  close(ends[1]);
  DescriptorLines lines(ends[0]);
  EXPECT_FALSE(lines.isAttended());
  EXPECT_THAT(readAll(lines), ElementsAre("one", "", "two " + std::string(10000, 'x'), "last"));
  close(ends[0]);
}

TEST(LineSource, AByteOrderMarkIsNoPartOfTheFirstCommand) {
  std::istringstream in("\xEF\xBB\xBFshow\nshow");
  StreamLines lines(in);
  EXPECT_THAT(readAll(lines), ElementsAre("show", "show"));
}

TEST(Screen, ALineNeverStandsBehindTheProgressThatWasThere) {
  std::ostringstream out;
  Screen screen(out, true);
  screen.progress("50% Writing");
  screen.progress("50% Writing");
  screen.line("done\x1b[2J");
  EXPECT_EQ(out.str(), "\r\x1b[K50% Writing\r\x1b[Kdone\\x1B[2J\n");

  std::ostringstream file;
  Screen noTerminal(file, false);
  noTerminal.progress("50% Writing");
  EXPECT_EQ(file.str(), "");
}

TEST(RunView, PrintsEveryEventOnceAlsoAfterThePageWasEmptied) {
  const test::TempDir temp;
  ActionState state;
  test::ScriptedDesktop desktop;
  test::ManualClock clock;
  LinuxFiles files(nullptr);
  const Workspace workspace = Workspace::below(temp.path(), temp.path(), temp.path());
  RunGrids grids(state, desktop, clock, files, workspace);
  std::ostringstream out;
  Screen screen(out, false);
  RunView view(screen, grids, state);
  desktop.onYield = [&view](int) { view.doPrintNewEvents(); };

  grids.doEventMessage("first");
  grids.doEventMessage("*second");
  grids.clearPage(0);
  desktop.doYield();
  grids.doEventMessage("third");
  state.ActionPage = 1;
  grids.doEventMessage("fourth");
  view.doPrintNewEvents();

  const std::string time = Dates::timeOfDay(clock.time);
  EXPECT_EQ(out.str(), time + "   first\n" + time + " * second\n" + time + "   third\n" + time +
                           "   fourth\n");
}

TEST(TableText, AlignsByCharactersAndLeavesOutWhatIsHidden) {
  Table table({"Name", "Secret", "Size"});
  table.setColHidden(1, true);
  table.addRow({"Größe\n1", "x", "1 KB"});
  table.addRow({"hidden", "x", "2 KB"});
  table.addRow({"a\tb", "x", ""});
  table.setRowHidden(2, true);
  EXPECT_EQ(tableText(table), "Name     Size\nGröße 1  1 KB\na\\tb\n");
}

TEST(PlanExport, AnyTextIsAJsonString) {
  EXPECT_EQ(jsonString("a\"b\\c\n\x01ü"), "\"a\\\"b\\\\c\\u000a\\u0001ü\"");
}

TEST(ProgramOptions, FoldersAreMadeAbsoluteAndAnythingUnknownIsRefused) {
  const ProgramOptions options =
      parseProgramOptions({"--app", "/a/./b", "--yes", "--discs", "/c/../d", "file"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.applicationFolder, "/a/b");
  EXPECT_EQ(options.shelf, "/d");
  EXPECT_EQ(options.commandFile, "file");
  EXPECT_TRUE(options.agreeToAll);
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"--app"}, {"--discs", ""}, {"--no"}, {"one", "two"}, {"-y"}})
    EXPECT_NE(parseProgramOptions(arguments).error, "") << arguments[0];
}

TEST(InstanceLock, ASecondProgramIsToldAndTheLockEndsWithTheFirst) {
  const test::TempDir temp;
  {
    const InstanceLock first(temp.path());
    EXPECT_TRUE(first.isFirst());
    EXPECT_FALSE(InstanceLock(temp.path()).isFirst());
  }
  EXPECT_TRUE(InstanceLock(temp.path()).isFirst());
  EXPECT_TRUE(InstanceLock(temp / "missing/").isFirst());
}

}  // namespace
}  // namespace korvenal::console
