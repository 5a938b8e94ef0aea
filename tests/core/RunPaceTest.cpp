#include "core/RunPace.h"

#include <gtest/gtest.h>

namespace korvenal {
namespace {

constexpr std::int64_t Total = 4'000'000'000;

/// Lets work go on at a speed, told twice a second.
struct Work {
  RunPace pace;
  std::int64_t time = 0;
  std::int64_t done = 0;

  void go(std::int64_t seconds, std::int64_t bytesPerSecond) {
    for (int half = 0; half < seconds * 2; ++half) {
      time += 500;
      done += bytesPerSecond / 2;
      pace.update(time, done, Total);
    }
  }
};

TEST(RunPaceTest, IsSilentUntilItHasSeenEnoughAndThenTellsTheSpeed) {
  Work work;
  work.go(20, 0);  // the drive sets itself up
  EXPECT_FALSE(work.pace.secondsLeft());
  work.go(2, 20'000'000);
  EXPECT_FALSE(work.pace.perSecond());
  work.go(18, 20'000'000);
  EXPECT_NEAR(*work.pace.perSecond(), 20e6, 1e5);
  EXPECT_EQ(*work.pace.secondsLeft(), 180);
}

TEST(RunPaceTest, FollowsAChangeOfSpeedAndAStandstill) {
  Work work;
  work.go(30, 10'000'000);
  work.go(40, 20'000'000);
  EXPECT_NEAR(*work.pace.perSecond(), 20e6, 5e5);
  const std::int64_t before = *work.pace.secondsLeft();
  work.go(30, 0);
  EXPECT_TRUE(!work.pace.secondsLeft() || *work.pace.secondsLeft() > 10 * before);
}

TEST(RunPaceTest, OtherWorkBeginsAnew) {
  Work work;
  work.go(30, 10'000'000);
  work.pace.update(work.time + 500, 0, Total);
  EXPECT_FALSE(work.pace.perSecond()) << "the next disc";
  Work other;
  other.go(30, 10'000'000);
  other.pace.update(other.time + 500, other.done, 0);
  EXPECT_FALSE(other.pace.perSecond()) << "what goes on now has no bytes";
}

TEST(RunPaceTest, EstimatesAreToldNoFinerThanTheyAre) {
  EXPECT_EQ(aboutTime(3), "a few seconds");
  EXPECT_EQ(aboutTime(34), "about 40 seconds");
  EXPECT_EQ(aboutTime(80), "about 1 minute");
  EXPECT_EQ(aboutTime(225), "about 4 minutes");
  EXPECT_EQ(aboutTime(3590), "about 1 hour");
  EXPECT_EQ(aboutTime(2 * 3600 + 17 * 60), "about 2 hours 20 minutes");
}

}  // namespace
}  // namespace korvenal
