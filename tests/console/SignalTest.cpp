#include <gmock/gmock.h>

#include "console/OtherProgram.h"
#include "console/PipedProgram.h"
#include "support/TempDir.h"

namespace korvenal::console {
namespace {

using testing::HasSubstr;

class SignalTest : public testing::Test {
 protected:
  SignalTest() { setenv("TMPDIR", temp_.makeFolder("scratch").c_str(), 1); }
  ~SignalTest() override { unsetenv("TMPDIR"); }

  std::vector<std::string> console() const {
    return {KORVENAL_CONSOLE, "--app", temp_ / "app", "--yes"};
  }

  test::TempDir temp_;
};

TEST_F(SignalTest, AClosedTerminalIsAStopAndNoDeath) {
  PipedProgram program(console());
  program.say("records\n");
  ASSERT_TRUE(program.waitFor("No disc record."));
  program.signal(SIGHUP);
  program.say("recent\n");
  EXPECT_TRUE(program.waitFor("No backup record."));
  EXPECT_EQ(program.end(), 0) << program.said();
}

TEST_F(SignalTest, ABurnOutlivesTheReaderOfItsOutput) {
  temp_.write("source/file", std::string(300'000, 'x'));
  PipedProgram program(console());
  program.say("records\n");
  ASSERT_TRUE(program.waitFor("No disc record."));
  program.closeOutput();
  program.say("new Piped\nadd '" + temp_.path() + "source'\nset comboDiscType 0\nbackup\n");
  EXPECT_EQ(program.end(), 0);

  auto look = console();
  look.push_back(temp_.write("look", "records\n"));
  EXPECT_EQ(runProgram(look, temp_ / "out"), 0);
  EXPECT_THAT(test::TempDir::read(temp_ / "out"), HasSubstr("Success."));
}

}  // namespace
}  // namespace korvenal::console
