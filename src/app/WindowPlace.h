#pragma once

#include "core/Settings.h"

namespace korvenal {

inline constexpr std::int64_t TwipsPerPixel = 15;

/// A size in twips.
struct ScreenSize {
  std::int64_t width = 0;
  std::int64_t height = 0;
};

/// Where the main window comes up, in twips from the corner of the screen.
struct WindowPlace {
  bool maximized = false;
  std::int64_t left = 0, top = 0;
  std::int64_t width = 0, height = 0;

  bool operator==(const WindowPlace&) const = default;
};

/// What of a stored place can be used on this screen. A size below the smallest of the program or
/// beyond the screen becomes the screen's own; a place outside of the screen's first quarter goes
/// to the corner.
WindowPlace usablePlace(const MainWindowPlace& stored, const ScreenSize& screen);

}  // namespace korvenal
