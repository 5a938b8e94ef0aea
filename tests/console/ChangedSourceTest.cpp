#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr const char* AfterScan = "Burning backup disc #1...";

/// Sources that are not the same at the scan, at the preparation of their disc and at its burn.
class ChangedSource : public ConsoleFixture {
 protected:
  ChangedSource() { run("default Notice 1"); }

  /// The first time that the line is printed.
  void at(const std::string& line, std::function<void()> happens) {
    whenPrinted.push_back({line, [happens = std::move(happens), first = true]() mutable {
                             if (std::exchange(first, false)) happens();
                           }});
  }
  /// Once, when the track of the first disc is being written.
  void inMidBurn(std::function<void()> happens) {
    temp.sparse("source/first", 200'000'000);
    whileWaiting = [this, happens = std::move(happens), first = true]() mutable {
      for (const auto& entry : fs::directory_iterator(temp / "app/Discs"))
        if (entry.path().extension() == ".iso" && entry.file_size() > 2'000'000 &&
            std::exchange(first, false))
          happens();
    };
  }
  void rewriteInPlace(const std::string& name, const std::string& text) const {
    const std::string file = source + name;
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary) << text;
    const struct timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  }
  std::string restored(const std::string& name) const {
    const std::string file = target + "/" + name;
    return fs::exists(file) ? test::TempDir::read(file) : "<missing>";
  }
  Outcome restoreAll() { return run("index\nselect all\nrestore " + target + "\nerrors\n"); }
};

TEST_F(ChangedSource, AChangeSinceTheScanIsBurnedAsItIsNow) {
  temp.write("source/grown", "before");
  temp.write("source/touched", "before");
  at(AfterScan, [this] {
    temp.write("source/grown", "behind, and longer");
    fs::last_write_time(source + "touched",
                        fs::file_time_type::clock::now() - std::chrono::hours(9));
  });
  const Outcome outcome = run(backup("") + "report 1\n");
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("Size error"));
  EXPECT_EQ(record(7), "Success.");
  const Outcome back = restoreAll();
  EXPECT_EQ(back.code, ExitCode::Ok) << back.out;
  EXPECT_EQ(restored("grown"), "behind, and longer");
  EXPECT_EQ(restored("touched"), "before");
}

TEST_F(ChangedSource, WhatCannotBeSavedIsToldWithItsReasonAndTheRestIsBurned) {
  for (const char* name : {"folder", "gone", "there"})
    temp.write(std::string("source/") + name, "x");
  at(AfterScan, [this] {
    fs::remove(source + "gone");
    fs::remove(source + "folder");
    fs::create_directory(source + "folder");
  });
  const Outcome outcome = run(backup("set BurnBackupIndex 1\n"));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr(source + "gone: No such file or directory"));
  EXPECT_THAT(outcome.out, HasSubstr(source + "folder: Is a directory"));
  EXPECT_EQ(record(7), "2 backup files error.");
  restoreAll();
  EXPECT_EQ(restored("there") + restored("gone"), "x<missing>");
}

TEST_F(ChangedSource, WhereErrorsAreNotSkippedAPersonDecidesAndNoDiscIsSpoilt) {
  temp.write("source/away", "away");
  temp.write("source/there", "there");
  int questions = 0;
  at(AfterScan, [this] { fs::rename(source + "away", temp / "away"); });
  whenPrinted.push_back({"This file cannot be saved.", [&] {
                           if (++questions == 2) fs::rename(temp / "away", source + "away");
                         }});
  const Outcome outcome =
      run("default SkipError 0\n" + backup(""), false, {"ok", "retry", "retry"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(questions, 2);
  EXPECT_EQ(restoreAll().code, ExitCode::Ok);
  EXPECT_EQ(restored("away") + restored("there"), "awaythere");

  whenPrinted.clear();
  at("Select drive (V:)", [this] { fs::remove(source + "away"); });
  const Outcome agreed = run(backup(""));
  EXPECT_EQ(agreed.code, ExitCode::Failed) << agreed.out;
  EXPECT_THAT(agreed.out, HasSubstr("[Skip]"));
  EXPECT_THAT(agreed.out, HasSubstr("Backup action finished."));
}

TEST_F(ChangedSource, WhatFailsInMidBurnIsNeverRestoredAsZeros) {
  const std::string content(100'000, 'z');
  temp.write("source/last", content);
  temp.write("target/last", "the good copy");
  inMidBurn([this] { rewriteInPlace("last", "other"); });
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr(source + "last: The file was changed while it was burned"));
  EXPECT_EQ(record(7), "1 backup file error.");
  const Outcome back = restoreAll();
  EXPECT_EQ(back.code, ExitCode::Failed);
  EXPECT_THAT(back.out, HasSubstr("The file was not saved when this disc was burned."));
  EXPECT_EQ(restored("last"), "the good copy");
  EXPECT_EQ(fs::file_size(target + "/first"), 200'000'000U);
}

TEST_F(ChangedSource, TheNextDifferentialTakesWhatChangedAfterItsDiscWasPrepared) {
  temp.write("source/inplace", "before");
  temp.write("source/moved", "before");
  inMidBurn([this] { ::chmod((source + "moved").c_str(), 0600); });
  const std::string differential = backup("set optBackupType 1\n");
  ASSERT_EQ(run(differential).code, ExitCode::Ok);
  whileWaiting = nullptr;
  EXPECT_THAT(run(differential).out, HasSubstr("1 file\n")) << "moved";
  EXPECT_THAT(run(differential).out, HasSubstr("No file need to be backup."));
  rewriteInPlace("inplace", "behind");
  EXPECT_THAT(run(differential).out, HasSubstr("1 file\n"));
}

TEST_F(ChangedSource, AStopWhileTheLastDiscIsVerifiedStopsNothingThatIsDone) {
  temp.write("source/file", "file");
  interruptAt = "Verifying backup files...";
  const Outcome outcome = run(backup(""), true, {"ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("Backup action finished."));
  EXPECT_THAT(outcome.out, Not(HasSubstr("Action stop by user.")));
  EXPECT_EQ(record(7), "Success.");
}

/// A file that goes over two discs.
class ChangedSplitFile : public ChangedSource {
 protected:
  ChangedSplitFile() {
    temp.sparse("source/large", 730'000'000);
    temp.write("source/small", "small");
  }
  std::size_t piecesOnShelf() const {
    std::size_t pieces = 0;
    for (const auto& entry : fs::directory_iterator(temp / "app/Discs"))
      if (entry.path().extension() == ".iso" && entry.file_size() > 10'000'000) ++pieces;
    return pieces;
  }
};

TEST_F(ChangedSplitFile, IsLostWhenAPieceOfAnotherStateIsBurned) {
  at("Burning backup disc #2...", [this] { rewriteInPlace("large", "other"); });
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr(source + "large: The file has changed"));
  EXPECT_EQ(record(7), "1 backup file error.");
  EXPECT_EQ(piecesOnShelf(), 1U) << "no further piece passes for good";
  EXPECT_EQ(restoreAll().code, ExitCode::Failed);
  EXPECT_FALSE(fs::exists(target + "/large"));
  EXPECT_EQ(restored("small"), "small");
}

TEST_F(ChangedSplitFile, IsTakenAsItIsNowBeforeItsFirstPiece) {
  at(AfterScan, [this] {
    rewriteInPlace("large", "other");
    fs::resize_file(source + "large", 729'000'000);
  });
  const Outcome outcome = run(backup(""));
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(restoreAll().code, ExitCode::Ok);
  EXPECT_EQ(fs::file_size(target + "/large"), 729'000'000U);
  std::ifstream large(target + "/large");
  std::string head(5, '\0');
  large.read(head.data(), 5);
  EXPECT_EQ(head, "other");
}

}  // namespace
}  // namespace korvenal::console
