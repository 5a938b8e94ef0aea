#include "app/WindowPlace.h"

#include <gtest/gtest.h>

namespace korvenal {
namespace {

TEST(WindowPlace, TakesWhatFitsTheScreen) {
  const ScreenSize screen{28800, 16200};  // 1920 by 1080 pixels
  struct Case {
    const char* name;
    MainWindowPlace stored;
    WindowPlace expected;
  };
  const Case cases[] = {
      {"first start", {}, {true, 0, 0, 28750, 15700}},
      {"as it was left", {0, 600, 450, 15000, 10500}, {false, 600, 450, 15000, 10500}},
      {"smallest", {0, 0, 0, 12000, 9000}, {false, 0, 0, 12000, 9000}},
      {"too narrow is as wide as the screen", {0, 0, 0, 5000, 9000}, {false, 0, 0, 28800, 9000}},
      {"too low is as high as the screen", {0, 0, 0, 12000, 8999}, {false, 0, 0, 12000, 16200}},
      {"as large as the screen", {0, 0, 0, 28800, 16200}, {false, 0, 0, 28800, 16200}},
      {"larger than the screen", {0, 0, 0, 28801, 99999}, {false, 0, 0, 28800, 16200}},
      {"half-way is near enough", {0, 14400, 8100, 12000, 9000}, {false, 14400, 8100, 12000, 9000}},
      {"too far to the right", {0, 25920, 8101, 12000, 9000}, {false, 0, 0, 12000, 9000}},
      {"outside", {0, -1, -1, 12000, 9000}, {false, 0, 0, 12000, 9000}},
      {"left minimized", {1, 600, 450, 15000, 10500}, {false, 600, 450, 15000, 10500}},
      {"maximized, wherever it was", {2, 99, 99, 5000, 5000}, {true, 0, 0, 28750, 15700}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(usablePlace(one.stored, screen), one.expected) << one.name;
}

}  // namespace
}  // namespace korvenal
