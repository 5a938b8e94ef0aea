#include "app/WindowPlace.h"

namespace korvenal {

namespace {

constexpr std::int64_t Maximized = 2;
constexpr std::int64_t SmallestWidth = 12000;
constexpr std::int64_t SmallestHeight = 9000;
// A window that leaves its maximized state is a little smaller than the screen.
constexpr std::int64_t MaximizedWidthGap = 50;
constexpr std::int64_t MaximizedHeightGap = 500;

std::int64_t usableSize(std::int64_t size, std::int64_t smallest, std::int64_t screen) {
  return size < smallest || size > screen ? screen : size;
}

std::int64_t usableOffset(std::int64_t offset, std::int64_t screen) {
  return offset < 0 || offset > screen / 2 ? 0 : offset;
}

}  // namespace

WindowPlace usablePlace(const MainWindowPlace& stored, const ScreenSize& screen) {
  if (stored.State == Maximized)
    return {.maximized = true,
            .width = screen.width - MaximizedWidthGap,
            .height = screen.height - MaximizedHeightGap};
  return {.left = usableOffset(stored.Left, screen.width),
          .top = usableOffset(stored.Top, screen.height),
          .width = usableSize(stored.Width, SmallestWidth, screen.width),
          .height = usableSize(stored.Height, SmallestHeight, screen.height)};
}

}  // namespace korvenal
