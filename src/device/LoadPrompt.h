#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "device/DeviceSettings.h"
#include "device/DriveDiscovery.h"
#include "device/SetDiscs.h"
#include "platform/BurnEngine.h"
#include "platform/Desktop.h"
#include "platform/ImageTrays.h"

namespace korvenal {

/// What a run tells the prompt for discs, and what it gets back. A run keeps one for its life.
struct DiscRequest {
  bool FirstPrompt = false;  ///< the first prompt of an action is showing
  // Burn.
  int TotalDiscs = 0;
  int DiscsBurned = 0;
  int BurnFromDisc = 1;      ///< back: the next disc to write
  int BurnToDisc = 1;        ///< back
  std::string FailedDrives;  ///< letters of drives whose disc has just failed
  std::string SizeHint;      ///< advice about a smaller disc; empty for none
  int comboDiscType = 0;     ///< index into DiscTypeTexts
  // Restore.
  std::vector<int> RestoreDiscList;  ///< disc numbers in visiting order; shown with two digits
                                     ///< at least ("Backup #02", "Backup #100")
  int RestoreDiscIndex = 0;          ///< entries done
  // Erase.
  bool SkipBlankDiscs = false;
  WantedDisc wantedSet = {};  ///< what tells the discs of the set; without a label
  /// For the feeder of image drives: "Photos (2026-11-22-10-00-F)", the set that discs belong to;
  /// empty when unknown.
  std::string setName;

  /// The k-th entry of the restore list, from 1; 0 beyond its end.
  int restoreDisc(int k) const {
    const bool inside = k >= 1 && k <= static_cast<int>(RestoreDiscList.size());
    return inside ? RestoreDiscList[static_cast<std::size_t>(k - 1)] : 0;
  }
};

/// The one way for a run to ask for discs.
class LoadPrompt {
 public:
  /// Opens the device settings over the prompt; set by the wiring.
  using OpenDeviceSettings = std::function<void()>;

  LoadPrompt(ActionState& state, Desktop& desktop, RunGrids& grids, BurnEngine& engine,
             ImageTrays& trays, DriveDiscovery& drives, const DeviceSettings& settings);

  OpenDeviceSettings doDevice;

  /// A person chose what lies in this image drive: the feeder leaves it there for the next prompt
  /// that is answered with OK. `doRelease`: it may serve the drive again.
  void doKeep(char letter) { kept_.insert(letter); }
  void doRelease(char letter) { kept_.erase(letter); }

  /// Shows the prompt; the caller has set `WorkerMode`. Reason: 0 first prompt of a run, 1 continue
  /// after a disc, 2 mark the written disc and reload. `StopAction` set afterwards: given up.
  void doAskLoadDisc(int reason, DiscRequest& request);

 private:
  void doTellDiscsInUse();

  ActionState& state_;
  Desktop& desktop_;
  RunGrids& grids_;
  BurnEngine& engine_;
  ImageTrays& trays_;
  DriveDiscovery& drives_;
  const DeviceSettings& settings_;
  std::set<char> kept_;
};

}  // namespace korvenal
