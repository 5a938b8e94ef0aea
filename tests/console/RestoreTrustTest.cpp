#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "console/RestoreFixture.h"
#include "support/FullDisk.h"
#include "support/SmallDisk.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* BeforeCopy = "Start restoring file";
constexpr uid_t NobodyAtAll = 65534;

/// Restores that are cut short, or cannot write: what stands in the target afterwards is whole, and
/// what is not there is told.
class RestoreTrust : public RestoreFixture {
 protected:
  ~RestoreTrust() override { EXPECT_EQ(seteuid(getuid()), 0); }

  /// The first time that the line is printed.
  void once(const std::string& line, std::function<void()> happens) {
    whenPrinted.push_back({line, [happens = std::move(happens), first = true]() mutable {
                             if (std::exchange(first, false)) happens();
                           }});
  }
  Outcome restore(int mode) {
    return run("index\nrestore " + target + " --mode " + std::to_string(mode) + "\nerrors");
  }
  /// Three discs of another program with a film split over them and a file behind it; the index.
  std::string makeSplitSet() {
    for (const int number : {2, 3, 4}) {
      const std::string part = std::to_string(number) + "/A/film/film.00";
      const std::string file = temp.write(part + std::to_string(number - 1), "part");
      fs::permissions(file, fs::perms(0640));
      fs::last_write_time(file, fs::last_write_time(file) - std::chrono::hours(50));
      fs::permissions(temp / (std::to_string(number) + "/A"), fs::perms(0750));
    }
    temp.write("4/A/after", "after");
    return writeIndex(
        test::IndexLines().folder("A", 2).split("A\\film", 12, {2, 3, 4}).file("A\\after", 5, 4));
  }
  /// From now on with no more rights than the program's own folders give to all.
  void beNobody() {
    for (const char* folder : {"", "app", "app/Discs", "app/LOG", "scratch"})
      fs::permissions(temp / folder, fs::perms(0777));
    EXPECT_TRUE(geteuid() != 0 || seteuid(NobodyAtAll) == 0);
  }
  mode_t modeOf(const std::string& path) const {
    struct stat status {};
    ::stat((target + "/" + path).c_str(), &status);
    return status.st_mode & 07777;
  }
  static int countOf(const std::string& out, const std::string& text) {
    int found = 0;
    for (std::size_t at = 0; (at = out.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  }
};

TEST_F(RestoreTrust, AStopInMidCopyLeavesNoHalfFile) {
  const std::string content(4'000'000, 'x');
  temp.write("source/large", content);
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  for (const int mode : {2, 3}) {
    interruptAt = BeforeCopy;
    const Outcome stopped = restore(0);
    EXPECT_EQ(stopped.code, ExitCode::Stopped) << stopped.out;
    EXPECT_THAT(stopped.out, HasSubstr("1 file selected: 0 restored, 0 skipped, 0 failed, 1 not"));
    EXPECT_THAT(inTarget(), IsEmpty()) << stopped.out;
    interruptAt.clear();
    EXPECT_EQ(restore(mode).code, ExitCode::Ok);
    EXPECT_TRUE(restored("large") == content) << mode;
    fs::remove(target + "/large");
  }
  temp.write("target/large", "as it was");
  interruptAt = BeforeCopy;
  EXPECT_EQ(restore(0).code, ExitCode::Stopped);
  EXPECT_EQ(restored("large"), "as it was");
}

TEST_F(RestoreTrust, AFullTargetKeepsWhatStoodThere) {
  const std::string content(8'000'000, 'x');
  temp.write("source/large", content);
  temp.write("source/small", "small");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  temp.write("target/large", "as it was");
  {
    const test::FullDisk full(4'000'000);
    const Outcome outcome = restore(0);
    EXPECT_EQ(outcome.code, ExitCode::Failed);
    EXPECT_THAT(outcome.out, HasSubstr("2 files selected: 1 restored, 0 skipped, 1 failed."));
  }
  EXPECT_EQ(restored("large"), "as it was");
  EXPECT_THAT(inTarget(), ElementsAre("large", "small"));
  EXPECT_EQ(restore(0).code, ExitCode::Ok);
  EXPECT_TRUE(restored("large") == content);
}

TEST_F(RestoreTrust, AFullDiskEndsTheRunWhichGoesOnWhenThereIsRoom) {
  const test::SmallDisk disk(target, 16'000'000);
  if (!disk) GTEST_SKIP() << "this user may mount nothing";
  const std::string content(5'000'000, 'x');
  for (const char* name : {"a", "b", "c"}) temp.write(std::string("source/") + name, content);
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  temp.write("target/filler", std::string(4'000'000, 'f'));
  once("Action stop: Insufficient HDD space.", [this] { fs::remove(target + "/filler"); });
  // A person goes on where a script would end.
  const std::string again = "restore " + target + " --mode 3";
  const Outcome outcome =
      run("index\n" + again + "\n" + again, false, {"ok", "yes", "ok", "ok", "ok"});
  EXPECT_THAT(outcome.out, HasSubstr("* Failed: Insufficient HDD space."));
  EXPECT_THAT(outcome.out, HasSubstr("2 restored, 0 skipped, 0 failed, 1 not done yet."));
  EXPECT_THAT(outcome.out, HasSubstr("3 files selected: 3 restored, 0 skipped, 0 failed."));
  EXPECT_THAT(inTarget(), ElementsAre("a", "b", "c"));
  EXPECT_TRUE(restored("c") == content);
}

TEST_F(RestoreTrust, ASplitFileGetsItsNameWithItsLastPart) {
  feeder = false;
  const std::string index = makeSplitSet();
  const std::string script =
      "disc insert V " + makeDisc(2) + "\nindex " + index + "\nselect all\nrestore " + target;
  makeDisc(3);
  makeDisc(4);
  const Outcome stopped = run(script + "\nerrors", false, {"no", "ok", "stop"});
  EXPECT_EQ(stopped.code, ExitCode::Stopped);
  ASSERT_EQ(inTarget("A").size(), 1U) << stopped.out;
  const std::string left = inTarget("A").front();
  EXPECT_TRUE(left.ends_with(".part"));
  EXPECT_THAT(stopped.out, HasSubstr("Not whole yet, left under the name " + left + "."));
  EXPECT_EQ(modeOf("A"), 0750U) << "folders get their look when the run is stopped, too";

  const Outcome whole = run("disc insert V " + temp.path() + "2.iso\nindex " + index +
                                "\nselect all\nrestore " + target + " --mode 3",
                            false,
                            {"no", "ok", "insert V " + temp.path() + "3.iso", "ok",
                             "insert V " + temp.path() + "4.iso", "ok"});
  EXPECT_EQ(whole.code, ExitCode::Ok) << whole.out;
  EXPECT_THAT(inTarget("A"), ElementsAre("after", "film"));
  EXPECT_EQ(restored("A/film"), "partpartpart");
  EXPECT_EQ(modeOf("A/film"), 0640U);
  const auto apart =
      fs::last_write_time(target + "/A/film") - fs::last_write_time(temp / "4/A/film/film.003");
  EXPECT_LT(std::chrono::abs(apart), std::chrono::seconds(2));
}

TEST_F(RestoreTrust, AFileThatCannotBeWrittenKeepsNoDiscWanted) {
  imageDrives = 2;
  feeder = false;
  temp.write("target/A/film/in its place", "");
  const std::string index = makeSplitSet();
  const Outcome outcome =
      run("device dvcM_Name1 V\ndevice dvcM_Name2 W\ndevice dvcType 1\n"
          "disc insert V " +
          makeDisc(2) + "\ndisc insert W " + makeDisc(4) + "\nindex " + index +
          "\nselect all\nrestore " + target + " --mode 0\nerrors");
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_EQ(restored("A/after"), "after");
  EXPECT_THAT(outcome.out, HasSubstr("Backup disc #3 is no longer needed"));
  EXPECT_THAT(outcome.out, HasSubstr("2 files selected: 1 restored, 0 skipped, 1 failed."));
  EXPECT_EQ(countOf(outcome.out, "Select drive (V:)"), 1) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("Is a directory"));
}

TEST_F(RestoreTrust, ADiscOfTheSetWithoutAWantedFileIsAskedForOnce) {
  feeder = false;
  temp.write("1/else", "text");
  temp.write("2/file2", "text");
  const std::string identity = "20261122100000-F Photos";
  makeDisc(2, identity);
  const Outcome outcome =
      run("disc insert V " + makeDisc(1, identity) + "\nindex " +
              writeIndex(test::IndexLines().file("file1", 4, 1).file("file2", 4, 2)) +
              "\nselect all\nrestore " + target + "\nerrors",
          false, {"no", "ok", "insert V " + temp.path() + "2.iso", "ok", "stop"});
  EXPECT_EQ(outcome.code, ExitCode::Failed) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("2 files selected: 1 restored, 0 skipped, 1 failed."));
  EXPECT_THAT(outcome.out, HasSubstr("Backup file not found."));
}

TEST_F(RestoreTrust, ASecondRestoreBeginsWithAnEmptyErrorList) {
  temp.write("source/f", "new");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  temp.write("target/f/in its place", "");
  once("Restore action finished.", [this] { fs::remove_all(target + "/f"); });
  const Outcome outcome = run("index\nrestore " + target + " --mode 0\nerrors\nrestore " + target +
                              " --mode 0\nerrors");
  EXPECT_EQ(restored("f"), "new") << outcome.out;
  EXPECT_EQ(countOf(outcome.out, "Is a directory"), 1) << outcome.out;
}

TEST_F(RestoreTrust, ATargetThatTakesNothingEndsTheRunAtItsFirstDisc) {
  feeder = false;
  temp.write("1/file1", "text");
  const std::string image = makeDisc(1);
  const std::string index = writeIndex(test::IndexLines().file("file1", 4, 1).file("file2", 4, 2));
  for (const bool vanishes : {true, false}) {
    once(BeforeCopy, [this, vanishes] {
      if (vanishes) {
        fs::remove_all(target);
        return;
      }
      fs::permissions(target, fs::perms(0555));
      beNobody();
    });
    const Outcome outcome =
        run("disc insert V " + image + "\nindex " + index + "\nselect all\nrestore " + target,
            false, {"no", "ok", "stop"});
    ASSERT_EQ(seteuid(getuid()), 0);
    EXPECT_EQ(outcome.code, ExitCode::Failed) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("* Action stop: " + target + ": ")) << outcome.out;
    EXPECT_THAT(outcome.out, Not(HasSubstr("Backup disc #2")));
    fs::create_directory(target);
    fs::permissions(target, fs::perms(0700));
    whenPrinted.clear();
  }
}

TEST_F(RestoreTrust, AFaultOfOneFileEndsNoRunBelowAFolderOfAnother) {
  temp.write("1/d/in the way", "text");
  temp.write("1/d/next", "text");
  fs::create_directories(target + "/d/in the way");
  const std::string script =
      "disc insert V " + makeDisc(1) + "\nindex " +
      writeIndex(test::IndexLines().folder("d").file("d\\in the way", 4).file("d\\next", 4)) +
      "\nselect all\nrestore " + target + " --mode 0";
  once(BeforeCopy, [this] {
    fs::permissions(target + "/d", fs::perms(0777));
    fs::permissions(target, fs::perms(0555));
    beNobody();
  });
  const Outcome outcome = run(script);
  ASSERT_EQ(seteuid(getuid()), 0);
  EXPECT_THAT(outcome.out, HasSubstr("2 files selected: 1 restored, 0 skipped, 1 failed."));
  EXPECT_EQ(restored("d/next"), "text");
  fs::permissions(target, fs::perms(0700));
}

TEST_F(RestoreTrust, WhatWentAwayWithItsTargetIsRestoredAnew) {
  feeder = false;
  temp.write("1/file1", "text");
  temp.write("2/file2", "text");
  const std::string first = makeDisc(1), second = makeDisc(2);
  const std::string index = writeIndex(test::IndexLines().file("file1", 4, 1).file("file2", 4, 2));
  once("from backup disc #2...", [this] { fs::remove_all(target); });
  const Outcome outcome = run("disc insert V " + first + "\nindex " + index +
                                  "\nselect all\nrestore " + target + "\nrestore " + target,
                              false,
                              {"no", "ok", "insert V " + second, "ok", "insert V " + first, "ok",
                               "insert V " + second, "ok"});
  EXPECT_THAT(inTarget(), ElementsAre("file1", "file2")) << outcome.out;
}

TEST_F(RestoreTrust, ADiscThatLeftTheDriveIsWantedAgainForWhatIsMissing) {
  constexpr int Files = 10;
  const std::string content(3'000'000, 'x');
  for (int i = 0; i < Files; ++i) temp.write("source/" + std::to_string(i), content);
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
    if (file.path().extension() == ".iso")
      std::ofstream(file.path().string() + ".disc", std::ios::app) << "pull-after=9000\n";
  const Outcome outcome = restore(3);
  EXPECT_THAT(outcome.out, HasSubstr("Failed: The disc left the drive."));
  EXPECT_THAT(outcome.out, HasSubstr("10 files selected: 10 restored, 0 skipped, 0 failed."));
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  for (int i = 0; i < Files; ++i) EXPECT_TRUE(restored(std::to_string(i)) == content) << i;
}

TEST_F(RestoreTrust, APrivateFolderIsPrivateAgain) {
  temp.write("source/private/deep/f", "secret");
  const auto day = fs::last_write_time(source + "private") - std::chrono::hours(100);
  for (const char* folder : {"private/deep", "private"}) {
    fs::permissions(source + folder, fs::perms(*(folder + 7) == 0 ? 0700 : 0511));
    fs::last_write_time(source + folder, day);
  }
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  EXPECT_EQ(restore(0).code, ExitCode::Ok);
  EXPECT_EQ(restored("private/deep/f"), "secret");
  EXPECT_EQ(modeOf("private"), 0700U);
  EXPECT_EQ(modeOf("private/deep"), 0511U);
  EXPECT_LT(std::chrono::abs(fs::last_write_time(target + "/private") - day),
            std::chrono::seconds(2));
  for (const std::string& folder : {source, target + "/"})
    fs::permissions(folder + "private/deep", fs::perms(0700));
}

TEST_F(RestoreTrust, FoldersComeBackWithTheirBitsAndDates) {
  temp.write("1/private/locked/f", "secret");
  temp.write("target/there/f", "old");
  temp.write("1/there/f", "new!");
  const auto day = fs::last_write_time(temp / "1/private") - std::chrono::hours(100);
  for (const char* folder : {"1/private/locked", "1/private"}) {
    fs::permissions(temp / folder, fs::perms(*(folder + 9) == 0 ? 0700 : 0555));
    fs::last_write_time(temp / folder, day);
  }
  fs::permissions(target + "/there", fs::perms(0710));
  fs::permissions(temp / "1/there", fs::perms(0755));
  const std::string index = writeIndex(test::IndexLines()
                                           .folder("private")
                                           .folder("private\\locked")
                                           .file("private\\locked\\f", 6)
                                           .folder("there")
                                           .file("there\\f", 4));
  const Outcome outcome = run("disc insert V " + makeDisc(1) + "\nindex " + index +
                              "\nselect all\nrestore " + target + " --mode 0");
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(restored("private/locked/f"), "secret");
  EXPECT_EQ(modeOf("private"), 0700U);
  EXPECT_EQ(modeOf("private/locked"), 0555U);
  EXPECT_EQ(modeOf("there"), 0710U) << "it stood there before";
  for (const char* folder : {"/private", "/private/locked"}) {
    const auto apart = fs::last_write_time(target + folder) - day;
    EXPECT_LT(std::chrono::abs(apart), std::chrono::seconds(2)) << folder;
  }
  fs::permissions(target + "/private/locked", fs::perms(0700));
  fs::permissions(temp / "1/private/locked", fs::perms(0700));
}

}  // namespace
}  // namespace korvenal::console
