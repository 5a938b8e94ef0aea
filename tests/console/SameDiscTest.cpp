#include <filesystem>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A person who presses "OK" without another disc in the drive.
class SameDisc : public ConsoleFixture {
 protected:
  SameDisc() {
    run("default Notice 1");
    feeder = false;
  }
};

TEST_F(SameDisc, OfTheRunAtHandIsNotErasedForItsNextDisc) {
  temp.sparse("source/large", 730'000'000);
  ASSERT_EQ(run("disc new V CD-RW").code, ExitCode::Ok);
  const Outcome outcome = run(backup("set AutoErase 1\n"), true, {"ok", "ok", "ok", "ok"});
  EXPECT_THAT(outcome.out, Not(HasSubstr("Quick erase")));
  EXPECT_THAT(outcome.out, HasSubstr("Error: Disc is not empty."));
  EXPECT_THAT(run("disc list").out, HasSubstr("Backup #1, 1 session"));
}

}  // namespace
}  // namespace korvenal::console
