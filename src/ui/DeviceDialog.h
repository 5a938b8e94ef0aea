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
  /// A list of drives with the buttons of its tray.
  struct DriveList {
    QComboBox* list;
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

  QWidget* modePart();
  QWidget* singlePage();
  QWidget* multiPage();
  QWidget* autoloaderPage();
  QWidget* speedPart();
  void addDrive(QGridLayout& grid, const QString& caption, const QString& name,
                const QString& buttons, int* choice);
  void addNumbers(QGridLayout& grid, const QString& caption, const char* name,
                  const QStringList& entries, int* value, int first);
  QCheckBox* addBox(QBoxLayout& column, const char* name, const QString& text, const bool* value,
                    std::function<void(bool)> change);
  void refreshDrive(const DriveList& drive);
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
