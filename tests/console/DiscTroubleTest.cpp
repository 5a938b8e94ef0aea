#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>

#include "console/ConsoleFixture.h"
#include "support/FullDisk.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* BeforeBurn = "Allocating data buffer...";
constexpr const char* BeforeVerify = "Verifying backup files...";
constexpr uid_t Nobody = 65534;

/// Discs that get into trouble while they are burned or read again. Each trouble is one sentence in
/// the record of its disc, and the next start goes on with the disc that is still missing.
class DiscTrouble : public ConsoleFixture {
 protected:
  DiscTrouble() {
    feeder = false;
    image_ = temp / "app/Discs/Disc.iso";
    run("default Notice 1\ndisc new V CD-R");
  }
  ~DiscTrouble() override { mend(); }

  void spoilDisc(const std::string& faults) {
    std::ofstream(image_ + ".disc", std::ios::app) << faults;
  }
  /// The first time that the line is printed.
  void at(const char* line, std::function<void()> happens) {
    whenPrinted.push_back({line, [happens = std::move(happens), first = true]() mutable {
                             if (std::exchange(first, false)) happens();
                           }});
  }
  /// As soon as something of the track stands in the image.
  void duringBurn(std::function<void()> happens) {
    if (!fs::exists(source + "large")) temp.sparse("source/large", 200'000'000);
    whileWaiting = [this, happens = std::move(happens)] {
      std::error_code missing;
      const auto size = fs::file_size(image_, missing);
      if (happened_ || missing || size < 1'000'000) return;
      happened_ = true;
      happens();
    };
  }
  void makeReadOnly() {
    fs::permissions(image_, fs::perms(0444));
    if (geteuid() != 0) return;
    // The superuser may write it all the same.
    for (const char* folder : {"", "app", "app/Discs", "app/LOG", "scratch"})
      fs::permissions(temp / folder, fs::perms(0777));
    ASSERT_EQ(seteuid(Nobody), 0);
  }
  void mend() {
    full_.reset();
    EXPECT_EQ(seteuid(getuid()), 0);
  }

  /// A burn fails and is given up at the next prompt; with a new disc the next start makes it good.
  void expectFailedBurn(const std::string& note) {
    if (!fs::exists(source + "large")) temp.sparse("source/large", 30'000'000);
    at("* Error: ", [this] { mend(); });
    const Outcome outcome =
        run(backup("") + "disc new V CD-R\nbackup\n", false, {"ok", "stop", "ok"});
    EXPECT_NE(outcome.code, ExitCode::Ok);
    EXPECT_THAT(outcome.out, HasSubstr("* " + note));
    expectGoodEnd(outcome.out);
  }
  /// A burn succeeds, but not all of it can be read again.
  void expectFilesInError(const std::string& note) {
    temp.write("source/file.txt", "text");
    const Outcome outcome = run(backup("") + "disc new V CD-R\nbackup\n", false, {"ok", "ok"});
    EXPECT_NE(outcome.code, ExitCode::Ok);
    EXPECT_THAT(outcome.out, HasSubstr("   " + note));
    expectGoodEnd(outcome.out);
  }
  void expectGoodEnd(const std::string& out) {
    EXPECT_EQ(count(out, "Collecting backup data information..."), 1) << "the plan still holds";
    EXPECT_EQ(count(out, "Burning backup disc #1..."), 2) << out;
    EXPECT_EQ(record(7), "Success.");
    EXPECT_THAT(run("disc list").out, HasSubstr("Backup #1, 1 session (tray open)"));
  }
  static int count(const std::string& out, const std::string& text) {
    int found = 0;
    for (std::size_t at = 0; (at = out.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  }

  std::string image_;
  bool happened_ = false;
  std::optional<test::FullDisk> full_;
};

TEST_F(DiscTrouble, TheDriveFailsInMidBurn) {
  spoilDisc("fail-burn=5000\nfail-number=1032\n");
  expectFailedBurn("Error: Drive function failed.");
}

TEST_F(DiscTrouble, TheDiskOfTheImageRunsFull) {
  at(BeforeBurn, [this] { full_.emplace(10'000'000); });
  expectFailedBurn("Error: File too large.");
}

TEST_F(DiscTrouble, TheImageBecomesReadOnly) {
  at(BeforeBurn, [this] { makeReadOnly(); });
  expectFailedBurn("Error: Permission denied.");
}

TEST_F(DiscTrouble, TheImageIsRemovedBeforeTheBurn) {
  at("Collecting disc track information...", [this] { fs::remove(image_); });
  expectFailedBurn("Error: ");
}

TEST_F(DiscTrouble, TheImageIsRemovedInMidBurn) {
  duringBurn([this] { fs::remove(image_); });
  expectFailedBurn("Error: ");
  EXPECT_TRUE(happened_);
}

TEST_F(DiscTrouble, TheImageIsCutShortInMidBurn) {
  duringBurn([this] { fs::resize_file(image_, 0); });
  expectFilesInError("3 backup files error.");
  EXPECT_TRUE(happened_);
}

TEST_F(DiscTrouble, TheImageIsRemovedWhenItIsReadAgain) {
  at(BeforeVerify, [this] { fs::remove(image_); });
  expectFilesInError("2 backup files error.");
}

TEST_F(DiscTrouble, TheImageIsCutShortWhenItIsReadAgain) {
  at(BeforeVerify, [this] { fs::resize_file(image_, 70'000); });
  expectFilesInError("2 backup files error.");
}

TEST_F(DiscTrouble, ThePlaceOfTheFoldersCannotBeRead) {
  spoilDisc("bad-block=50\n");
  expectFilesInError("2 backup files error.");
}

TEST_F(DiscTrouble, TheDiscIsPulledOutWhenItIsReadAgain) {
  spoilDisc("pull-after=1\n");
  expectFilesInError("2 backup files error.");
}

TEST_F(DiscTrouble, TheDiscCannotBeErased) {
  temp.write("source/file.txt", "text");
  image_ = temp / "app/Discs/Disc 2.iso";
  ASSERT_EQ(run("disc new V CD-RW\n" + backup("")).code, ExitCode::Ok);
  spoilDisc("fail-erase=1\nfail-number=1032\n");
  EXPECT_EQ(run("erase quick").code, ExitCode::Failed);
  EXPECT_EQ(record(1) + " " + record(7), "Quick-erase Error: Drive function failed.");
  const Outcome outcome = run(backup("set AutoErase 1\n"));
  EXPECT_EQ(record(7), "Error: Disc erasing failed.") << outcome.out;
}

TEST_F(DiscTrouble, OnlyTheDiscThatIsMissingIsBurnedAgain) {
  temp.sparse("source/large", 730'000'000);
  image_.clear();  // nothing befalls disc 1
  at("Burning backup disc #2...", [this] {
    for (const auto& entry : fs::directory_iterator(temp / "app/Discs"))
      if (entry.path().native().ends_with("disc 02.iso")) image_ = entry.path();
  });
  duringBurn([this] { fs::remove(image_); });
  const Outcome outcome = run(backup("") + "disc new V CD-R\nbackup\n", false,
                              {"ok", "blank V CD-R", "ok", "stop", "ok"});
  EXPECT_EQ(count(outcome.out, "Burning backup disc #1..."), 1);
  EXPECT_EQ(count(outcome.out, "Burning backup disc #2..."), 2);
  EXPECT_TRUE(happened_);
  EXPECT_EQ(record(5) + " " + record(7), "Backup #2 Success.");
}

}  // namespace
}  // namespace korvenal::console
