#include "burn/DiscWriter.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr std::int64_t GiB = 1'073'741'824;

struct DiscWriterTest : testing::Test {
  BurnWorld world;
  DiscWriter writer{world.services};
  DiscRequest request;

  void load(char letter, const FakeDisc& disc) { world.engine.drives[letter] = {.disc = disc}; }
  void write() { writer.doWriteDiscs(request); }
};

TEST_F(DiscWriterTest, ThePlanOfADiscReachesTheEngine) {
  world.planThreeDiscs();
  for (int disc = 1; disc <= 3; ++disc) {
    load('V', {});
    write();
    EXPECT_EQ(world.note(disc), "Success.");
    EXPECT_EQ(request.BurnFromDisc, disc + 1);
    EXPECT_EQ(world.engine.disc().label, "Backup #" + std::to_string(disc));
    EXPECT_TRUE(world.engine.drives['V'].open);
  }
  std::vector<std::string> layout;
  for (const std::string& call : world.engine.calls)
    if (call.starts_with("do_Create") || call.starts_with("do_Insert")) layout.push_back(call);
  const std::string index = "do_InsertFileWithName \\ _KORVEN{H}.bdx part 0 0 0 0 of 900";
  EXPECT_THAT(
      layout,
      ElementsAre("do_CreateDir \\ Photos",
                  "do_InsertFileWithName Photos a.jpg part 0 0 0 0 of 3000 dated",
                  "do_CreateDir Photos big.iso",
                  "do_InsertFileWithName Photos\\big.iso big.iso.001 part -1 0 4194304 0 of "
                  "10485760 dated",
                  index, "do_CreateDir \\ Photos",
                  "do_InsertFileWithName Photos\\big.iso big.iso.002 part -1 2048 6291456 0 of "
                  "10485760 dated",
                  "do_InsertFileWithName Photos b.jpg part 0 0 0 0 of 3000 dated", index,
                  "do_InsertFileWithName Photos c.jpg part 0 0 0 0 of 3000 dated", index));
  EXPECT_EQ(world.grids.vsOutput[0].text(1, 6), "700MB CD-R");
  EXPECT_EQ(world.records.vsLog.Rows(), 4);
  EXPECT_THAT(world.engine.calls, Not(Contains("do_LoadMedium"))) << "no reset for a CD";
}

TEST_F(DiscWriterTest, AVeryLongPieceIsToldInWholeGiBAndARest) {
  const auto split = world.addFolder(PlanTable::DiscRoot, "big.iso", RowType::SplitFile, 1);
  world.files.sources["/src/big.iso"].kind = FileInfo::Kind::File;
  world.addPiece(split, {.number = 7, .start = GiB + 1, .end = 3 * GiB + 5}, 1);
  load('V', {.type = 5, .totalBlocks = 2298496});
  write();
  EXPECT_THAT(world.engine.calls, Contains(HasSubstr("big.iso.007 part -1 524288 5 2 of")));
}

TEST_F(DiscWriterTest, EveryFailureIsOneSentenceInTheRecord) {
  struct Case {
    const char* note;
    std::function<void(BurnWorld&, FakeDisc&)> arrange;
  };
  const auto failing = [](const std::string& call) {
    return [call](BurnWorld& w, FakeDisc&) { w.engine.failing[call] = {1}; };
  };
  const auto rewritableWithData = [](BurnWorld& w, FakeDisc& disc) {
    disc = {.type = 3, .usedBlocks = 10, .sessions = 1, .erasable = true};
    w.job.AutoErase = true;
  };
  const Case cases[] = {
      {"Error: Unknown disc type.", failing("do_DiscIs")},
      {"Error: Disc is not writable.", failing("do_Writable")},
      {"Error: Wrong disc type.", [](auto& w, auto&) { w.plan.DiscUsed[0] = 736'970'753; }},
      {"Error: Disc is not empty.",
       [](auto& w, auto& disc) {
         w.plan.TotalDiscs = 2;
         disc.sessions = 1;
       }},
      {"Error: Subsequent session exceed 2GB.",
       [](auto& w, auto& disc) {
         disc = {.type = 5, .totalBlocks = 2298496, .sessions = 1};
         w.plan.DiscUsed[0] = LargeFileLimit + 1;
       }},
      {"Error: Disc erasing failed.",
       [&](auto& w, auto& disc) {
         rewritableWithData(w, disc);
         w.engine.failing["do_EraseDisc"] = {1};
       }},
      {"Error: Disc erasing failed.",
       [&](auto& w, auto& disc) {
         rewritableWithData(w, disc);
         w.engine.finishCode = 9;
       }},
      {"Error: Disc file system imcompatiable.",
       [](auto&, auto& disc) {
         disc.sessions = 1;
         disc.fileSystem = "UDF 1.50";
       }},
      {"Error: Disc file system imcompatiable.",
       [](auto& w, auto& disc) {
         disc.type = 10;
         w.engine.failing["do_EraseDisc"] = {1};
       }},
      {"Error: Disc has exceeded 99 sessions limitation.",
       [](auto&, auto& disc) { disc.sessions = 100; }},
      {"Error: Disc free space not enough.",
       [](auto& w, auto& disc) {
         w.plan.TotalDiscs = 2;
         disc.usedBlocks = disc.totalBlocks - 1;
       }},
      {"Error: Disc free space not enough.", [](auto&, auto& disc) { disc.totalBlocks = 102; }},
      {"Success.", [](auto&, auto& disc) { disc.totalBlocks = 103; }},
      {"Error: Disc track preparation failed.", failing("do_Prepare")},
      {"Error: Disc image creation failed.", failing("do_GetImageSize")},
      {"Error: Data buffer allocated failed.", failing("do_Burn")},
      {"Error: Session creation failed.", failing("session")},
      {"Error: Disc writing failed.",
       [](auto& w, auto&) {
         w.engine.finishCode = 3;
         w.engine.errorNumber = 14848;
       }},
      {"Error: Disc may be damaged/corrupted.",  // nothing arrived, yet the engine is content
       [](auto& w, auto& disc) {
         disc = {.type = 10, .sessions = 1};
         w.engine.blockLoss = 102;
       }},
  };
  for (const Case& one : cases) {
    BurnWorld fresh;
    fresh.planOneFile();
    DiscRequest from;
    fresh.grids.vsError[0].addRow({"of the disc before", "PASS", ""});
    FakeDisc disc;
    one.arrange(fresh, disc);
    fresh.engine.drives['V'].disc = disc;
    DiscWriter writes(fresh.services);
    writes.doWriteDiscs(from);

    const bool good = std::string(one.note) == "Success.";
    EXPECT_EQ(fresh.note(1), one.note);
    EXPECT_EQ(fresh.grids.vsOutput[0].Rows(), 2) << one.note;
    EXPECT_TRUE(fresh.hasEvent((good ? "" : "*") + std::string(one.note)));
    EXPECT_EQ(writes.DiscErrorCount, good ? 0 : 1) << one.note;
    EXPECT_EQ(from.BurnFromDisc, good ? 2 : 1) << one.note;
    EXPECT_EQ(fresh.grids.vsError[0].hasData(), good) << "a report of another disc";
    EXPECT_FALSE(fresh.engine.drives['V'].locked) << one.note;
    EXPECT_TRUE(fresh.engine.drives['V'].open) << one.note;
    EXPECT_EQ(fresh.state.TaskError, 0);
    EXPECT_FALSE(fresh.state.DiscInWork || fresh.state.Erasing);
  }
}

TEST_F(DiscWriterTest, ADiscIsMadeReadyAsItsKindNeeds) {
  world.planOneFile();
  load('V', {.type = 10, .erasable = true});
  write();
  EXPECT_TRUE(world.hasEvent("Disc formatted successfully."));
  EXPECT_EQ(world.note(1), "Success.");
  EXPECT_THAT(world.engine.calls, Contains("do_LoadMedium")) << "read anew before verifying";
  EXPECT_THAT(world.engine.calls, Not(Contains(HasSubstr("do_SetFinalizeDisc"))));

  request = {};
  load('V', {.type = 5, .totalBlocks = 2298496, .usedBlocks = 500, .sessions = 1});
  write();
  EXPECT_TRUE(world.hasEvent("Sessions imported successfully."));
  EXPECT_THAT(world.engine.calls, Contains("do_SetReplaceFile -1"));
  EXPECT_EQ(world.note(2), "Success.");
  EXPECT_TRUE(world.hasEvent("Disc free space remaining:  4.4 GB"));

  request = {};
  world.job.AutoErase = world.job.FinalizeDisc = true;
  load('V', {.type = 3, .usedBlocks = 500, .sessions = 1, .erasable = true});
  write();
  EXPECT_TRUE(world.hasEvent("Quick erase successfully."));
  EXPECT_EQ(world.engine.disc().files.size(), 1U);
  EXPECT_THAT(world.engine.calls, Contains("do_SetFinalizeDisc -1"));
}

TEST_F(DiscWriterTest, DrivesAreServedInTurnAndFailuresCounted) {
  world.useDrives("VW", 1);
  world.devices.MultiErrorMax = 2;
  world.planThreeDiscs();
  load('W', {});
  write();
  EXPECT_EQ(world.grids.vsOutput[0].Rows(), 2) << "a drive without a disc leaves no record";
  EXPECT_EQ(world.grids.vsOutput[0].text(1, 0), "W:");

  load('V', {.writable = false});
  load('W', {});
  write();
  EXPECT_EQ(request.BurnFromDisc, 3) << "the next drive takes the disc that failed";
  EXPECT_EQ(world.state.TaskError, 0);

  load('V', {.writable = false});
  load('W', {});
  write();
  EXPECT_EQ(world.state.TaskError, -1);
  EXPECT_TRUE(world.hasEvent("*Action stop: Disc burning error counted 2."));
  EXPECT_EQ(request.BurnFromDisc, 3);
  EXPECT_FALSE(world.engine.drives['W'].open) << "left alone after the limit";
  EXPECT_EQ(writer.faults.discs, 2);
}

TEST_F(DiscWriterTest, WhyABurnCouldNotBeginIsToldBesideItsSentence) {
  for (const char* call : {"do_Prepare", "do_Burn"}) {
    BurnWorld fresh;
    fresh.planOneFile();
    fresh.engine.failing[call] = {1};
    fresh.engine.errorText = "No space left on device";
    fresh.engine.drives['V'].disc = FakeDisc();
    DiscRequest from;
    DiscWriter(fresh.services).doWriteDiscs(from);
    EXPECT_TRUE(fresh.hasEvent("*No space left on device")) << call;
  }
}

TEST_F(DiscWriterTest, AnAutoloaderHasALimitOfItsOwn) {
  world.useDrives("V", 2);
  world.devices.MultiErrorMax = 1;
  world.devices.AutoloaderErrorMax = 2;
  world.planThreeDiscs();
  for (const int error : {0, -1}) {
    load('V', {.writable = false});
    write();
    EXPECT_EQ(world.state.TaskError, error);
  }
  EXPECT_TRUE(world.hasEvent("*Action stop: Disc burning error counted 2."));
}

TEST_F(DiscWriterTest, ADriveThatMustReadAnewMakesAllOfThatLoadDoSo) {
  world.useDrives("VW", 1);
  world.devices.MultiErrorMax = 2;
  world.planThreeDiscs();
  load('V', {.type = 11, .totalBlocks = 2295104, .usedBlocks = 500, .sessions = 1});
  load('W', {});
  write();
  EXPECT_EQ(world.note(1), "Error: Disc is not empty.");
  EXPECT_EQ(world.note(2), "Success.");
  EXPECT_EQ(world.engine.count("do_LoadMedium"), 1);
}

}  // namespace
}  // namespace korvenal::test
