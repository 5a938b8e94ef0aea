#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/DiscType.h"
#include "platform/linux/engine/MmcFacts.h"

namespace korvenal::test {
namespace {

using Medium = MmcReport::Medium;
using Format = MmcReport::Format;

/// A disc as the library reports it, and what the program shall see.
struct DiscCase {
  const char* name;
  MmcReport report;
  SessionChain chain;
  int type;
  bool writable, erasable;
  int sessions;
  std::int64_t total, free;
  std::int64_t start, lastSession;
  EraseKind quickErase;
};

class MmcDiscTest : public ::testing::TestWithParam<DiscCase> {};

// clang-format off
constexpr auto None = Medium::None, Blank = Medium::Blank, Open = Medium::Appendable,
               Full = Medium::Full;
INSTANTIATE_TEST_SUITE_P(All, MmcDiscTest, ::testing::Values(
    // Name, {profile, medium, erasable, sessions, free, next, last session, readable, format, its
    // size}, trees; then type, writable, erasable, sessions, total, free, start, last session, erase
    DiscCase{"NoDisc", {0, None}, {},
             DiscNone, false, false, 0, 0, 0, 0, -1, EraseKind::Blank},
    DiscCase{"UnknownDisc", {0x43, Blank, false, 0, 11826176}, {},
             DiscNone, false, false, 0, 0, 0, 0, -1, EraseKind::Blank},
    DiscCase{"BlankCdR", {MmcCdR, Blank, false, 0, 359849}, {},
             DiscCdR, true, false, 0, 359849, 359849, 0, -1, EraseKind::Blank},
    DiscCase{"AppendableCdRw", {MmcCdRw, Open, true, 2, 200000, 150000, 100000, 140000}, {},
             DiscCdRw, true, true, 2, 350000, 200000, 150000, 100000, EraseKind::Blank},
    DiscCase{"ClosedCdR", {MmcCdR, Full, false, 1, 77, 0, 0, 300000}, {},
             DiscCdR, false, false, 1, 300000, 0, 0, 0, EraseKind::Blank},
    DiscCase{"ClosedDvdRw", {MmcDvdRwSequential, Full, true, 1, 0, 0, 0, 5000}, {},
             DiscDvdRw, true, true, 1, 5000, 0, 0, 0, EraseKind::Blank},
    DiscCase{"BrokenOffDvdR", {MmcDvdR, Full, false, 0, 0, 0, -1, 900}, {},
             DiscDvdR, false, false, 1, 900, 0, 0, -1, EraseKind::Blank},
    DiscCase{"PressedDvd", {MmcDvdRom, Full, false, 1, 0, 0, 0, 2000000}, {},
             DiscDvdRom, false, false, 1, 2000000, 0, 0, 0, EraseKind::Blank},
    DiscCase{"DualLayer", {MmcDvdPlusRDl, Blank, false, 0, 4173824}, {},
             DiscDvdPlusRDl, true, false, 0, 4173824, 4173824, 0, -1, EraseKind::Blank},
    DiscCase{"FactoryFreshPlusRw",
             {MmcDvdPlusRw, Blank, false, 0, 2295104, 0, -1, 0, Format::Unformatted, 2295104}, {},
             DiscDvdPlusRw, true, true, 0, 2295104, 0, 32, -1, EraseKind::Format},
    DiscCase{"FormattedPlusRw",
             {MmcDvdPlusRw, Blank, false, 0, 2295104, 0, -1, 0, Format::Formatted, 2295104}, {},
             DiscDvdPlusRw, true, true, 1, 2295104, 2295104, 32, -1, EraseKind::ClearHead},
    DiscCase{"WrittenPlusRw",
             {MmcDvdPlusRw, Blank, false, 0, 2295104, 0, -1, 0, Format::Formatted, 2295104},
             {{32, 1024}, 1501},
             DiscDvdPlusRw, true, true, 1, 2295104, 2293600, 1504, 1024, EraseKind::ClearHead},
    DiscCase{"RamWithTwoTrees", {MmcDvdRam, Blank, false, 0, 2236704}, {{32, 64}, 96},
             DiscDvdRam, true, true, 2, 2236704, 2236608, 96, 64, EraseKind::ClearHead},
    DiscCase{"FullRestrictedOverwrite",
             {MmcDvdRwOverwrite, Blank, false, 0, 0, 0, -1, 0, Format::Formatted, 1000},
             {{32}, 1000},
             DiscDvdRwRestricted, true, true, 1, 1000, 0, 1024, 32, EraseKind::ClearHead}),
    [](const auto& param) { return param.param.name; });
// clang-format on

TEST_P(MmcDiscTest, BecomesWhatTheProgramSees) {
  const DiscCase& disc = GetParam();
  const DiscState state = MmcFacts::stateOf(disc.report, disc.chain);
  EXPECT_EQ(int{state.type}, disc.type);
  EXPECT_EQ(state.writable, disc.writable);
  EXPECT_EQ(state.erasable, disc.erasable);
  EXPECT_EQ(state.sessions, disc.sessions);
  EXPECT_EQ(state.totalBlocks, disc.total);
  EXPECT_EQ(state.freeBlocks, disc.free);
  const TrackPlace place = MmcFacts::placeOf(disc.report, disc.chain);
  EXPECT_EQ(place.startBlock, disc.start);
  EXPECT_EQ(place.lastSession, disc.lastSession);
  EXPECT_EQ(MmcFacts::eraseKindOf(disc.report, true), disc.quickErase);
}

TEST(MmcFactsTest, CapabilitiesFollowTheProfilesOfTheDrive) {
  const std::vector<int> cdWriter = {MmcCdRom, MmcCdR, MmcCdRw, MmcDvdRom};
  const std::vector<int> singleLayer = {MmcCdR, MmcDvdPlusRw};
  const std::vector<int> all = {MmcDvdR,     MmcDvdRwSequential, MmcDvdRam,
                                MmcDvdPlusR, MmcDvdPlusRw,       MmcDvdPlusRDl};
  const auto codes = [](const std::vector<int>& profiles) {
    std::string known;
    for (std::uint8_t code = 10; code < 22; ++code)
      if (MmcFacts::can(code, profiles)) known += std::to_string(code) + " ";
    return known;
  };
  EXPECT_EQ(codes(cdWriter), "");
  EXPECT_EQ(codes(singleLayer), "17 ");
  EXPECT_EQ(codes(all), "13 14 15 16 17 18 ");
}

TEST(MmcFactsTest, AWishedSpeedBecomesOneOfTheDrive) {
  const std::vector<int> speeds = {5540, 11080, 3324};
  EXPECT_EQ(MmcFacts::speedFor(0, speeds), 11080);
  EXPECT_EQ(MmcFacts::speedFor(11079, speeds), 5540);
  EXPECT_EQ(MmcFacts::speedFor(5540, speeds), 5540);
  EXPECT_EQ(MmcFacts::speedFor(100, speeds), 3324);
  EXPECT_EQ(MmcFacts::speedFor(100, {}), 0);
}

TEST(MmcFactsTest, DrivesAreNamedByWhatTheySayOfThemselves) {
  EXPECT_EQ(MmcFacts::devicePathOf("HL-DT-ST\n", "DVD #1 GH24&X  \n", "LG00\n", "sr0"),
            "SCSI#CDROM&VEN_HL-DT-ST&PROD_DVD__1_GH24_X&REV_LG00#sr0");
}

TEST(MmcFactsTest, TheTableOfTheSystemTellsWhoWrites) {
  const std::string table =
      "CD-ROM information, Id: cdrom.c 3.20 2003/12/17\n\n"
      "drive name:\t\tsr2\tsr1\tsr0\n"
      "drive speed:\t\t24\t24\t48\n"
      "Can read DVD:\t\t1\t1\t1\n"
      "Can write CD-R:\t\t0\t0\t1\n"
      "Can write DVD-R:\t0\t1\t1\n\n";
  EXPECT_EQ(MmcFacts::writesDiscs(table, "sr0"), true);
  EXPECT_EQ(MmcFacts::writesDiscs(table, "sr1"), true);
  EXPECT_EQ(MmcFacts::writesDiscs(table, "sr2"), false);
  EXPECT_EQ(MmcFacts::writesDiscs(table, "sr3"), std::nullopt);
  EXPECT_EQ(MmcFacts::writesDiscs("", "sr0"), std::nullopt);
}

TEST(MmcFactsTest, TheRefusalOfADriveHasANumberAndWords) {
  struct Case {
    const char* message;
    int number;
    const char* text;
  };
  for (const Case& told :
       {Case{"SCSI error on write(0,16): [2 04 08] Drive not ready. Long write in progress.", 1032,
             "Drive not ready. Long write in progress"},
        Case{"[5 24 00] Illegal request", 9216, "Illegal request"},
        Case{"Track [1]: [2 3A 00] Not ready.", 14848, "Not ready"}, Case{"[3 0C 00]", 3072, ""},
        Case{"[0 00 00] No sense", 0, "No sense"}}) {
    const auto sense = MmcFacts::senseOf(told.message);
    ASSERT_TRUE(sense) << told.message;
    EXPECT_EQ(sense->number, told.number);
    EXPECT_EQ(sense->text, told.text);
  }
  for (const char* message :
       {"", "no sense", "[1 2", "[a b]", "[2 3A 00 00]", "[5 1FF 00]", "[x y z]"})
    EXPECT_FALSE(MmcFacts::senseOf(message)) << message;
}

}  // namespace
}  // namespace korvenal::test
