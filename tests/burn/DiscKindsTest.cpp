#include <gtest/gtest.h>

#include "burn/DiscWriter.h"
#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

struct DiscKinds : testing::Test {
  /// What is said of a plan of so many bytes, burned on that disc.
  std::string noteOf(const FakeDisc& disc, std::int64_t bytes, int* loads = nullptr) {
    BurnWorld world;
    world.planOneFile();
    world.plan.DiscUsed[0] = bytes;
    world.engine.drives['V'].disc = disc;
    DiscRequest request;
    DiscWriter(world.services).doWriteDiscs(request);
    if (loads != nullptr) *loads = world.engine.count("do_LoadMedium");
    return world.note(1);
  }
};

TEST_F(DiscKinds, ASessionBehindAnotherEndsAtTwoGigabytesOnDiscsThatAreWrittenOnce) {
  for (const std::uint8_t type : {DiscDvdR, DiscDvdPlusR, DiscDvdRw, DiscDvdPlusRDl}) {
    const FakeDisc disc{.type = type, .totalBlocks = 2298496, .usedBlocks = 500, .sessions = 1};
    const bool limited = type == DiscDvdR || type == DiscDvdPlusR;
    EXPECT_EQ(noteOf(disc, LargeFileLimit), "Success.") << int{type};
    EXPECT_EQ(noteOf(disc, LargeFileLimit + 1),
              limited ? "Error: Subsequent session exceed 2GB." : "Success.")
        << int{type};
  }
}

TEST_F(DiscKinds, SomeAreReadAnewBeforeTheyAreVerified) {
  for (const std::uint8_t type : {DiscCdR, DiscDvdR, DiscDvdPlusR, DiscDvdPlusRDl}) {
    int loads = -1;
    EXPECT_EQ(noteOf({.type = type, .totalBlocks = 2295104}, 3000, &loads), "Success.");
    EXPECT_EQ(loads, type == DiscDvdPlusR || type == DiscDvdPlusRDl ? 1 : 0) << int{type};
  }
}

}  // namespace
}  // namespace korvenal::test
