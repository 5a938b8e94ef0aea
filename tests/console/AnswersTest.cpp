#include "console/Answers.h"

#include <gmock/gmock.h>

#include <sstream>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

const Question SplitOrSkip{{"S&plit It", "S&kip It", "&Stop", "Split &All"}, 0, 2};

struct Fixture {
  std::ostringstream out;
  Screen screen{out, false};
  std::istringstream nothing;
  StreamLines nobody{nothing};
};

TEST(Answers, FindsAButtonByItsWordsOrAnUnambiguousBeginning) {
  const auto& buttons = SplitOrSkip.buttons;
  EXPECT_EQ(Answers::find(buttons, "Skip It"), 1);
  EXPECT_EQ(Answers::find(buttons, "split all"), 3);
  EXPECT_EQ(Answers::find(buttons, " st "), 2);
  EXPECT_EQ(Answers::find(buttons, "Split"), -1);
  EXPECT_EQ(Answers::find(buttons, ""), -1);
}

TEST(Answers, PreparedOnesGoBeforeAgreementAndAreUsedOnce) {
  Fixture f;
  Answers answers(f.nobody, f.screen, true);
  answers.queue("Skip It");
  EXPECT_EQ(answers.choose(SplitOrSkip), 1);
  EXPECT_EQ(answers.choose(SplitOrSkip), 0);
  EXPECT_FALSE(answers.takeMismatch());
}

TEST(Answers, APreparedOneThatDoesNotFitIsToldAndDoesNoHarm) {
  Fixture f;
  Answers answers(f.nobody, f.screen, false);
  answers.queue("Maybe");
  EXPECT_EQ(answers.choose(SplitOrSkip), SplitOrSkip.refusing);
  EXPECT_TRUE(answers.takeMismatch());
  EXPECT_FALSE(answers.takeMismatch());
}

TEST(Answers, WhereAllIsAgreedToAPreparedOneWaitsForItsQuestion) {
  Fixture f;
  Answers answers(f.nobody, f.screen, true);
  answers.queue("Skip It");
  EXPECT_EQ(answers.choose({{"Yes", "No"}, 0, 1}), 0);
  EXPECT_EQ(answers.choose(SplitOrSkip), 1);
  EXPECT_FALSE(answers.takeMismatch());
}

TEST(Answers, APersonIsAskedAgainUntilAButtonFitsAndRefusesByGoingAway) {
  Fixture f;
  Person person({"what?", "skip"});
  Answers answers(person, f.screen, false);
  EXPECT_EQ(answers.choose(SplitOrSkip), 1);
  EXPECT_EQ(answers.choose(SplitOrSkip), SplitOrSkip.refusing);
}

TEST(Answers, WithNobodyToAskTheAnswerIsTheRefusal) {
  Fixture f;
  Answers answers(f.nobody, f.screen, false);
  EXPECT_EQ(answers.choose(SplitOrSkip), SplitOrSkip.refusing);
}

}  // namespace
}  // namespace korvenal::console
