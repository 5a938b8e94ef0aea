#pragma once

#include <array>

#include "device/frmLoadDisc.h"
#include "ui/FormDialogs.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace korvenal::ui {

class DriveLine;

/// The prompt for discs: the sentence, a line a drive with its tray, and the way on. Image drives
/// have a menu of discs to put in.
class LoadDiscDialog : public FormDialog {
  Q_OBJECT
 public:
  LoadDiscDialog(frmLoadDisc& form, const DialogServices& services, QWidget* parent);

 protected:
  void refresh() override;

 private:
  /// One drive as it is shown.
  struct DriveRow {
    QLabel* name = nullptr;
    DriveLine* disc = nullptr;    ///< what lies in an image drive
    QPushButton* tray = nullptr;  ///< opens the menu of an image drive
    QPushButton* eject = nullptr;
    QPushButton* close = nullptr;
  };

  void doBuildRange(class QVBoxLayout& column);
  void doBuildDrives(class QVBoxLayout& column);
  void doBuildDrive(class QGridLayout& grid, int row);
  void doBuildButtons(class QVBoxLayout& column);
  void doRefreshDrive(int row);
  void doRefreshRange();
  void refreshMissing();
  bool isMnemonicFree(QChar letter) const;

  frmLoadDisc& form_;
  QLabel* sentence_;
  QWidget* BackupDisc_;
  QLabel* fromCaption_;
  QComboBox* FromDisc_;
  QLabel* toCaption_;
  QComboBox* ToDisc_;
  QCheckBox* ckSkipBlank_;
  QWidget* InfoIcon_;
  QLabel* DiscInfo_;
  QLabel* MissingDisc_;
  QLabel* DriveAction_;
  QWidget* vsDrive_;
  QLabel* noDrive_;
  std::array<DriveRow, frmLoadDisc::MaxDrives> drives_;
  QPushButton* pbEject_;
  QPushButton* pbCloseTray_;
  QPushButton* pbSetDevice_;
  QPushButton* pbStop_;
  QPushButton* pbOK_;
};

}  // namespace korvenal::ui
