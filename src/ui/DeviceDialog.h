#pragma once

#include <array>
#include <vector>

#include "device/frmDevice.h"
#include "ui/FormDialog.h"
#include "ui/FormDialogs.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace korvenal::ui {

/// The device settings: which drives are used, and how.
class DeviceDialog : public FormDialog {
  Q_OBJECT
 public:
  DeviceDialog(frmDevice& form, const DialogServices& services, QWidget* parent);

 protected:
  void refresh() override;

 private:
  /// How a list of drives is shown. Underlined letters are in the captions.
  struct DriveCaptions {
    QString drive, eject, close;
    QString listName;
    QString buttonPrefix, number;  ///< of the buttons' names: "multi" "Eject" "0"
  };
  /// A list of drives with what lies in the one chosen and the buttons of its tray.
  struct DriveList {
    QComboBox* list;
    QLabel* disc;
    QPushButton* eject;
    QPushButton* close;
    int* choice;  ///< in the form
  };
  struct NumberList {
    QComboBox* list;
    int* value;  ///< in the form
    int first;   ///< the value of the first entry
  };
  struct Box {
    QCheckBox* box;
    const bool* value;  ///< in the form
  };

  void doBuild();
  QWidget* modePart();
  QWidget* singlePage();
  QWidget* multiPage();
  QWidget* autoloaderPage();
  QWidget* commandPart();
  QWidget* speedPart();
  QHBoxLayout* buttons();
  /// Makes the last of `drives_`, without a place yet, and its caption.
  QLabel* addDrive(const DriveCaptions& captions, int* choice);
  void placeRow(QGridLayout& grid, int row, QLabel* caption);
  QComboBox* addNumbers(const char* name, const QStringList& entries, int* value, int first);
  QHBoxLayout* errorRow(const char* name, int* value);
  QLabel* buddyLabel(const QString& caption, QWidget* field);
  QCheckBox* addBox(QBoxLayout& column, const char* name, const QString& text, const bool* value,
                    std::function<void(bool)> change);
  void refreshDrive(const DriveList& drive);
  QString discText(int choice) const;
  void focusMultiDrive();

  frmDevice& form_;
  DialogServices services_;
  QButtonGroup* modes_;
  QStackedWidget* pages_;
  std::vector<DriveList> drives_;
  std::vector<NumberList> numbers_;
  std::vector<Box> boxes_;
  std::array<QLineEdit*, 5> commands_{};
  QPushButton* pbRefresh_;
};

}  // namespace korvenal::ui
