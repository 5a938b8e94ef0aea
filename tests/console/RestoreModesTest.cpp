#include <filesystem>
#include <fstream>

#include "console/RestoreFixture.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RestoreModes : public RestoreFixture {};

/// What stands in the target before, and what the person says.
struct ModeCase {
  const char* options;
  const char* answer;  ///< prepared; empty: none
  int hoursNewer;      ///< the existing file against the source
  bool replaced;
};

TEST_F(RestoreModes, AnExistingFileIsTreatedByTheMode) {
  temp.write("source/f", "new");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  for (const ModeCase& given : {ModeCase{"--mode 0", "", 5, true},
                                {"--mode 1", "Yes", 5, true},
                                {"--mode 1", "No", -5, false},
                                {"--mode 2", "", 5, false},
                                {"--mode 2", "", -5, true},
                                {"--mode 3", "", -5, false}}) {
    SCOPED_TRACE(std::string(given.options) + given.answer);
    const std::string file = temp.write("target/f", "old");
    fs::last_write_time(file,
                        fs::last_write_time(source + "f") + std::chrono::hours(given.hoursNewer));
    const std::string said = *given.answer != 0 ? "answer " + std::string(given.answer) + "\n" : "";
    run("index\n" + said + "restore " + target + " " + given.options);
    EXPECT_EQ(restored("f"), given.replaced ? "new" : "old");
  }
}

TEST_F(RestoreModes, FilesOfOneNameMeetWhenTheyComeBackWithoutFolders) {
  temp.write("source/x/f", "first");
  temp.write("source/y/f", "second");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  const struct {
    const char* mode;
    const char* answer;
    const char* content;
    ExitCode code;
  } cases[] = {{"0", "", "first", ExitCode::Failed},
               {"2", "", "first", ExitCode::Failed},
               {"1", "answer No\n", "first", ExitCode::Ok},
               {"1", "answer Yes\n", "second", ExitCode::Ok},
               {"3", "", "first", ExitCode::Ok}};
  for (const auto& given : cases) {
    const Outcome outcome = run("index\n" + std::string(given.answer) + "restore " + target +
                                " --only-files --mode " + given.mode + "\nerrors");
    EXPECT_EQ(outcome.code, given.code) << outcome.out;
    EXPECT_EQ(outcome.out.find("Another restored file bears this name.") != std::string::npos,
              given.code == ExitCode::Failed);
    EXPECT_THAT(inTarget(), ElementsAre("f"));
    EXPECT_EQ(restored("f"), given.content) << given.mode;
    fs::remove(target + "/f");
  }
}

TEST_F(RestoreModes, AFolderInTheWayIsNoExistingFile) {
  temp.write("source/f", "new");
  fs::create_directories(target + "/f");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  const Outcome outcome = run("index\nrestore " + target + " --mode 3\nerrors");
  EXPECT_EQ(outcome.code, ExitCode::Failed) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("0 restored, 0 skipped, 1 failed."));
}

TEST_F(RestoreModes, AFileThatNobodyMayReadComesBackAsSuch) {
  temp.write("1/sealed", "secret");
  fs::permissions(temp / "1/sealed", fs::perms::none);
  const std::string disc = makeDisc(1);
  const Outcome outcome =
      run("disc insert V " + disc + "\nindex " + writeIndex(test::IndexLines().file("sealed", 6)) +
          "\nselect all\nrestore " + target);
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(fs::status(target + "/sealed").permissions(), fs::perms::none);
}

TEST_F(RestoreModes, AFileSplitOverThreeDiscsIsJoinedWhateverDrivesTheyLieIn) {
  imageDrives = 3;
  feeder = false;
  const std::string parts[] = {std::string(300'000, 'a'), std::string(300'000, 'b'),
                               std::string(300'000, 'c')};
  for (const int number : {2, 3, 4})
    temp.write(std::to_string(number) + "/A/film/film.00" + std::to_string(number - 1),
               parts[number - 2]);
  temp.write("4/A/after", "after");
  const std::string index = writeIndex(test::IndexLines()
                                           .folder("A", 2)
                                           .split("A\\film", 900'000, {2, 3, 4})
                                           .file("A\\after", 5, 4));
  const Outcome outcome =
      run("device dvcM_Name1 V\ndevice dvcM_Name2 W\ndevice dvcM_Name3 X\ndevice dvcType 1\n"
          "disc insert V " +
          makeDisc(4) + "\ndisc insert W " + makeDisc(2) + "\ndisc insert X " + makeDisc(3) +
          "\nindex " + index + "\nselect all\nrestore " + target);
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_TRUE(restored("A/film") == parts[0] + parts[1] + parts[2]);
  EXPECT_EQ(restored("A/after"), "after");
}

TEST_F(RestoreModes, PartsThatNoLineTellsOfAddUpToTheFile) {
  temp.write("1/film/film.001", "one");
  temp.write("1/film/film.002", "two");
  const std::string insert = "disc insert V " + makeDisc(1) + "\nindex ";
  for (const char* bytes : {"6", "7"}) {
    const std::string index = writeIndex(
        test::IndexLines()
            .line({"2", "film\\", "", bytes, "3", test::IndexLines::Date, "2", "1", "1", "1"})
            .line({"2", "film\\film", "", "3", "4", "", "1", "1", "1", "1"}));
    const Outcome outcome =
        run(insert + index + "\nselect all\nrestore " + target + " --mode 0\nerrors");
    const bool whole = *bytes == '6';
    EXPECT_EQ(outcome.code, whole ? ExitCode::Ok : ExitCode::Failed) << outcome.out;
    EXPECT_EQ(outcome.out.find("The file on disc is not the one") == std::string::npos, whole);
    EXPECT_EQ(restored("film"), "onetwo");
  }
}

TEST_F(RestoreModes, OneFileOfAHundredDiscsAsksForItsDiscAlone) {
  feeder = false;
  test::IndexLines lines;
  lines.discs = 100;
  for (int disc = 1; disc <= 100; ++disc) lines.file("file" + std::to_string(disc), 6, disc);
  temp.write("57/file57", "wanted");
  const std::string script = "disc insert V " + makeDisc(57) + "\nindex " + writeIndex(lines) +
                             "\nselect file57\nrestore " + target;
  // Who says OK once is asked once.
  const Outcome outcome = run(script, false, {"no", "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(inTarget(), ElementsAre("file57"));
  EXPECT_EQ(restored("file57"), "wanted");
}

TEST_F(RestoreModes, ABadPlaceCostsTheFileThatLiesThereAndNoOther) {
  temp.write("source/a.txt", "before");
  temp.write("source/d/b.txt", std::string(300'000, 'b'));
  temp.write("source/_z.bin", std::string(4'000'000, 'z'));
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  std::string image;
  for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
    if (file.path().extension() == ".iso") image = file.path();
  constexpr std::uintmax_t Block = 2048, FromEnd = 1200;
  std::ofstream(image + ".disc", std::ios::app)
      << "bad-block=" << fs::file_size(image) / Block - FromEnd << "\n";
  const Outcome outcome = run("index\nrestore " + target + "\nerrors");
  ASSERT_EQ(outcome.code, ExitCode::Failed) << outcome.out;
  EXPECT_EQ(restored("a.txt"), "before") << outcome.out;
  EXPECT_EQ(restored("d/b.txt"), std::string(300'000, 'b'));
  EXPECT_FALSE(fs::exists(target + "/_z.bin")) << "half a file";
  EXPECT_THAT(outcome.out, HasSubstr("2 files restored. 1 file error."));
  EXPECT_THAT(outcome.out, HasSubstr("1 file with errors"));
  EXPECT_THAT(outcome.out,
              testing::ContainsRegex("Backup #1 +Input/output error\\. +" + target + "/_z.bin"));
}

}  // namespace
}  // namespace korvenal::console
