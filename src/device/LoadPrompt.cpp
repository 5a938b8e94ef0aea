#include "device/LoadPrompt.h"

#include "device/frmLoadDisc.h"

namespace korvenal {

LoadPrompt::LoadPrompt(ActionState& state, Desktop& desktop, RunGrids& grids, BurnEngine& engine,
                       ImageTrays& trays, DriveDiscovery& drives, const DeviceSettings& settings)
    : state_(state),
      desktop_(desktop),
      grids_(grids),
      engine_(engine),
      trays_(trays),
      drives_(drives),
      settings_(settings) {}

void LoadPrompt::doAskLoadDisc(int reason, DiscRequest& request) {
  {
    const FlagScope modal(state_.IgnoreEvents);
    if (state_.WorkerMode != WorkerReadIndex) {
      grids_.doEventMessage("Ask for loading disc...");
      doTellDiscsInUse();
    }
    frmLoadDisc form({.state = state_,
                      .desktop = desktop_,
                      .engine = engine_,
                      .trays = trays_,
                      .drives = drives_,
                      .settings = settings_,
                      .openDeviceSettings = doDevice,
                      .keptDrives = kept_},
                     request, reason);
    desktop_.doShowModal(form);
  }
  if (!state_.StopAction) kept_.clear();
  desktop_.doYield();
}

/// The feeder takes another disc in the place of one that cannot be used; nobody shall wonder why.
void LoadPrompt::doTellDiscsInUse() {
  for (int drive = 0; drive < settings_.driveCount(); ++drive) {
    const char letter = settings_.letter(drive);
    if (!trays_.isImageDrive(letter)) continue;
    const ImageDisc disc = trays_.discIn(letter);
    if (disc.elsewhere != ImageUse::None)
      grids_.doEventMessage("*The disc " + disc.file + " in drive (" + std::string(1, letter) +
                            ":) is in use by another program.");
  }
}

}  // namespace korvenal
