#include <cstdlib>
#include <filesystem>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

/// The home folder of a scope.
class HomeFolder {
 public:
  explicit HomeFolder(const std::string& folder) : before_(std::getenv("HOME")) {
    ::setenv("HOME", folder.c_str(), 1);
  }
  ~HomeFolder() { ::setenv("HOME", before_.c_str(), 1); }
  HomeFolder(const HomeFolder&) = delete;
  HomeFolder& operator=(const HomeFolder&) = delete;

 private:
  std::string before_;
};

class FirstSteps : public ConsoleFixture {
 protected:
  /// What README.md tells a person to type.
  static std::string readmeSession() {
    const std::string prompt = "korvenal> ";
    std::string script;
    const std::string page = test::TempDir::read(std::string(KORVENAL_SOURCE_DIR) + "/README.md");
    for (const std::string& line : Text::split(page, '\n'))
      if (line.starts_with(prompt)) script += line.substr(prompt.size()) + "\n";
    return script;
  }
};

TEST_F(FirstSteps, TheSessionOfTheReadmeWorksAsPrinted) {
  const HomeFolder home(temp.makeFolder("home"));
  temp.write("home/Photos/Sea/a.jpg", "picture");
  temp.write("home/Photos/b.jpg", "another");
  temp.write("home/Documents/letter.txt", "text");
  const Outcome outcome = run(readmeSession());
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(test::TempDir::read(temp / "home/restored/Photos/Sea/a.jpg"), "picture");
  EXPECT_EQ(test::TempDir::read(temp / "home/restored/Photos/b.jpg"), "another");
}

TEST_F(FirstSteps, APathThatIsNotThereIsCalledSo) {
  const HomeFolder home(temp.makeFolder("home"));
  const Outcome outcome = run("new Job\nadd ~/nothing");
  EXPECT_THAT(outcome.out, HasSubstr("There is no " + temp.path() + "home/nothing."));
  EXPECT_THAT(outcome.out, Not(HasSubstr("unicode")));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
}

TEST_F(FirstSteps, NamesStayOnTheirLine) {
  const std::string odd = "two\nlines\x1B[31m.txt";
  temp.write("source/" + odd, "content");
  temp.write("source/plain.txt", "content");
  const Outcome outcome = run("new Job\nset comboDiscType 0\nadd '" + source + "'\nshow\nbackup");
  EXPECT_THAT(outcome.out, HasSubstr("two\\nlines\\x1B[31m.txt"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("\nlines")));
  EXPECT_THAT(outcome.out, Not(HasSubstr("Name on Disc  Name on Disc")));
}

TEST_F(FirstSteps, TheRoomIsThatOfTheVolumeOfTheTarget) {
  temp.write("source/plain.txt", "content");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  const Outcome outcome = run("index\nrestore " + target);
  EXPECT_THAT(outcome.out, testing::ContainsRegex("Free space in drive (/|/[^ ]+)  [0-9]"));
}

}  // namespace
}  // namespace korvenal::console
