#pragma once

#include <array>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "device/DiscFeeder.h"
#include "device/HandFeeder.h"
#include "device/LoadPrompt.h"
#include "platform/Form.h"
#include "platform/Table.h"

namespace korvenal {

/// What the prompt works with.
struct LoadDiscServices {
  ActionState& state;
  Desktop& desktop;
  BurnEngine& engine;
  ImageTrays& trays;
  DriveDiscovery& drives;
  const DeviceSettings& settings;
  LoadPrompt::OpenDeviceSettings openDeviceSettings;
  std::set<char> keptDrives = {};  ///< a person chose what lies in them
};

/// The prompt for discs: says what to load, serves the trays, and lets the run go on when at least
/// one drive is ready. Which disc was loaded is not looked at. Outcome: `StopAction` set means
/// given up; else the request holds the disc range or the box of the erase.
class frmLoadDisc : public Form {
 public:
  static constexpr int MaxDrives = 5;

  /// What the person sees of one drive. Rows count from 0; `vsDrive` has row + 1.
  struct DriveButtons {
    bool shown = false;
    bool enabled = false;
  };

  frmLoadDisc(LoadDiscServices services, DiscRequest& request, int reason);

  std::array<std::string, 3> DESC;  ///< the sentence; captions beside FromDisc and ToDisc
  bool BackupDiscShown = false;     ///< the frame with the disc range
  bool ToDiscShown = false;         ///< with its caption DESC[2]
  int discChoices = 0;              ///< both lists hold 1 to this number
  int FromDisc = 0;                 ///< disc numbers, from 1
  int ToDisc = 0;
  bool ckSkipBlankShown = false;
  bool ckSkipBlank = false;
  std::string DiscInfo;     ///< the hint; empty hides it with its icon
  std::string MissingDisc;  ///< what the shelf lacks, shown in red; empty for nothing
  std::string DriveAction;  ///< the status line
  std::string pbStopCaption = "&Stop";
  Table vsDrive;  ///< header and five rows: "E:", model
  std::array<DriveButtons, MaxDrives> driveButtons;
  bool trayButtonsShown = false;  ///< pbEject and pbCloseTray
  bool commandsEnabled = false;   ///< pbOK, pbEject, pbCloseTray and the buttons of drives
  int deviceMode = 0;             ///< for the picture of pbSetDevice

  void doActivate() override;
  void doCloseBox() override;

  void pbOK();
  void pbStop();
  void pbEject();
  void pbCloseTray();
  void multiEject(int row);
  void multiClose(int row);
  void pbSetDevice();
  /// The person picked another first disc.
  void doChooseFromDisc(int disc);

  // Image drives, as real ones are served by hand. Each change counts as the person's own choice,
  // which the feeder does not touch. One that fails tells why, gives false, and leaves the tray as
  // it was.
  bool isImageDrive(int row) const;
  ImageDisc discInTray(int row) const;
  bool isTrayOpen(int row) const;
  /// The type of blank disc that the run wants; `DiscNone` when it wants none.
  std::uint8_t blankType() const { return hand_.blankType(); }
  /// Those that fit the request best come first, then the newest.
  std::vector<ShelfDisc> discsOnShelf() const;
  /// The new disc is named after what it is for. `blocks` 0: as large as real ones.
  bool doInsertBlank(int row, std::uint8_t typeCode, std::int64_t blocks = 0);
  bool doInsertFromShelf(int row, const std::string& file);
  /// Lets the person choose among all discs. False as well when none was chosen.
  bool doInsertOther(int row);
  bool doTakeOut(int row);
  /// Shows the folder of the disc in the tray, or the shelf, in the file manager.
  bool doShowShelf(int row);

  int purpose() const { return purpose_; }  ///< a WorkerModeValue
  bool isBusy() const { return busy_; }
  /// None of the drives of the mode is there.
  bool isWithoutDrive() const { return activated_ && !busy_ && driveCount_ == 0; }
  /// Discs have been erased; the run goes on for as long as more are offered.
  bool isForMoreErasing() const;

 private:
  void doBuildPrompt();
  void doBuildBurnPrompt(const std::string& prefix);
  void doBuildRestorePrompt(const std::string& prefix);
  void doFillDrives();
  void doFeed();
  void tellMissing();
  void doEjectTrays();
  void doCloseTrays(bool showMessage);
  void doDriveTray(char letter, bool close);
  bool doWaitForDisc();
  bool isDriveUsable(char letter);
  void doCheckErasable(char letter);
  void doEnableCommands(bool enabled);
  void doShowStatus(const std::string& text);
  void doGiveUp();
  char letterOf(int row) const;
  /// The disc of the plan that a burn puts on the disc in this drive, as far as can be told.
  int discOfRow(int row) const;
  bool doServe(int row, const std::function<TrayResult(char)>& change);
  int modeDrives() const { return services_.settings.driveCount(); }

  LoadDiscServices services_;
  DiscRequest& request_;
  DiscFeeder feeder_;
  HandFeeder hand_;
  int purpose_;
  int loadReason_;
  bool activated_ = false;
  bool busy_ = false;
  int traysToUse_ = 0;
  int driveCount_ = 0;
  bool cancelRequested_ = false;
  bool ejectAtPrompt_ = false;
  bool skipFirstEject_ = false;
};

}  // namespace korvenal
