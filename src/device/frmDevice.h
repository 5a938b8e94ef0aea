#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/ActionState.h"
#include "device/DeviceSettings.h"
#include "device/DriveDiscovery.h"
#include "platform/BurnEngine.h"
#include "platform/Desktop.h"
#include "platform/Form.h"
#include "platform/ImageTrays.h"
#include "platform/Profile.h"

namespace korvenal {

struct DeviceServices {
  ActionState& state;
  Desktop& desktop;
  BurnEngine& engine;
  DriveDiscovery& drives;
  DeviceSettings& settings;
  Profile& profile;
  ImageTrays& trays;
};

/// The device settings. Every way out saves; the form refuses to close while the drives of
/// Multiple-drive mode are too few or alike. A list shows "Nil" for a chosen drive that is not
/// there now; the drive stays chosen until the person picks another in that list.
class frmDevice : public Form {
 public:
  explicit frmDevice(DeviceServices services);

  /// What a drive list offers: "Nil", then the drives found ("E: VENDOR PRODUCT").
  std::vector<std::string> driveChoices{"Nil"};
  /// "Max.", "High", "Medium", "Low", then "52x" down to "2x"; for DVD from "20x".
  static const std::vector<std::string>& speedChoicesCD();
  static const std::vector<std::string>& speedChoicesDVD();

  // Indices into the lists above.
  int OptDevice = 0;  ///< the page in view: 0 Single-drive, 1 Multiple-drive, 2 Autoloader
  int singleDrive = 0;
  std::array<int, 5> multiDrive{};
  int AL01 = 0;
  int ReadSpeedCD = 0, WriteSpeedCD = 0, ReadSpeedDVD = 0, WriteSpeedDVD = 0;
  bool chkSingleEject = true, chkSSkipEjectFirst = true;
  bool chkMultiEject = true, chkMSkipEjectFirst = false;
  int MultiErrorMax = 1, AutoloaderErrorMax = 1;  ///< 1 to 5 discs
  bool AutoloaderBadDisc = true;
  std::array<std::string, 5> AutoloaderCommand;
  bool refreshEnabled = true;
  /// The letter of Single-drive mode when its drive is not there now; else empty.
  const std::string& absentSingleDrive() const { return absentSingle_; }
  /// The list of Multiple-drive mode that was refused last, from 0; -1 for none.
  int focusedMultiDrive = -1;

  void doActivate() override;
  void doCloseBox() override { doSaveAndClose(); }

  void pbOK() { doSaveAndClose(); }
  void pbCancel() { doSaveAndClose(); }
  void pbRefresh();
  // The two boxes of a pair follow each other.
  void doCheckSingleEject(bool on);
  void doCheckSingleSkipFirst(bool on);
  void doCheckMultiEject(bool on);
  void doCheckMultiSkipFirst(bool on);
  /// A command line, as far as the settings can hold it.
  void doSetCommand(std::size_t command, const std::string& text);
  /// Opens or closes the tray of the drive that a list shows; nothing for "Nil".
  void doDriveTray(int choice, bool close);

  /// Whether a list shows an image drive. Only of those it is known what lies in them without
  /// waiting for a drive.
  bool isImageDrive(int choice) const;
  /// Of an image drive only.
  ImageDisc discIn(int choice) const { return services_.trays.discIn(letterOf(choice).front()); }
  bool isOpen(int choice) const { return services_.trays.isOpen(letterOf(choice).front()); }

 private:
  void doFillDriveLists();
  /// Points the lists at the drives of these letters.
  void doChooseLetters(const std::string& single, const std::array<std::string, 5>& multi,
                       const std::string& autoloader);
  void doSaveAndClose();
  /// Whether the form may close.
  bool doSaveDevices();
  bool doCheckMultiDrives();
  void doFocus(std::size_t list);
  void doWriteSettings();
  int choiceOf(const std::string& letter) const;
  std::string letterOf(int choice) const;
  /// The choice for a chosen letter, which is kept in `absent` when its drive is not there.
  int takeLetter(const std::string& letter, std::string& absent) const;
  std::string chosenLetter(int choice, const std::string& absent) const {
    return choice == 0 ? absent : letterOf(choice);
  }
  std::array<std::string, 5> multiLetters() const;

  DeviceServices services_;
  std::string absentSingle_, absentAutoloader_;
  std::array<std::string, 5> absentMulti_;
  bool filling_ = false;  ///< the drive lists are being made
};

}  // namespace korvenal
