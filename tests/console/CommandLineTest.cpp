#include "console/CommandLine.h"

#include <gmock/gmock.h>

namespace korvenal::console {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(CommandLine, SeparatesWordsByTheQuotingRulesOfAShell) {
  EXPECT_THAT(parseCommandLine("  set\tcomboDiscType  0 \r").words,
              ElementsAre("set", "comboDiscType", "0"));
  EXPECT_THAT(parseCommandLine("set \"chkAttribute(1)\" 0").words,
              ElementsAre("set", "chkAttribute(1)", "0"));
  EXPECT_THAT(parseCommandLine(R"(add '/a b/$HOME "x"\' "/c\\d \"e\" \n" /f\ g)").words,
              ElementsAre("add", R"(/a b/$HOME "x"\)", R"(/c\d "e" \n)", "/f g"));
  EXPECT_THAT(parseCommandLine("set comboExclude '' \"\"x").words,
              ElementsAre("set", "comboExclude", "", "x"));
}

TEST(CommandLine, ACommentBeginsAWordNotInsideOne) {
  EXPECT_THAT(parseCommandLine("add /a#1 # the rest").words, ElementsAre("add", "/a#1"));
  EXPECT_THAT(parseCommandLine("# all").words, IsEmpty());
  EXPECT_THAT(parseCommandLine("add '#'").words, ElementsAre("add", "#"));
}

TEST(CommandLine, AnOpenQuoteMakesTheWholeLineUnreadable) {
  for (const char* line : {"add 'a b", "add \"a b", "add a\\", "add \"a\\\""}) {
    const CommandLine read = parseCommandLine(line);
    EXPECT_THAT(read.words, IsEmpty()) << line;
    EXPECT_THAT(read.error, Not(IsEmpty())) << line;
  }
}

}  // namespace
}  // namespace korvenal::console
