#pragma once

#include <array>

namespace korvenal {

/// What a run sets of the buttons of its page; front ends show them so.
struct RunPage {
  bool buttonsVisible = true;  ///< `PBSTART`, `PBSaveJob`, `PBBack`, `PBNext`
  bool ProgressPanel = false;  ///< the progress line is shown
  bool pbStopVisible = false;
  bool pbStopEnabled = false;  ///< pressing it does something
  bool OnlyShowErrorFileEnabled = true;
  int DiscInHand = 0;    ///< place of the disc that is worked on in its run, from 1; 0 for none
  char DriveInHand = 0;  ///< letter of the drive it is in
};

/// The run pages: 0 backup, 1 restore, 2 erase.
using RunPages = std::array<RunPage, 3>;

}  // namespace korvenal
