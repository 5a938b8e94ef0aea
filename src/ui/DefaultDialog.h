#pragma once

#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "core/frmDefault.h"
#include "ui/FormDialog.h"
#include "ui/FormDialogs.h"

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QVBoxLayout;

namespace korvenal::ui {

/// The default options.
class DefaultDialog : public FormDialog {
  Q_OBJECT
 public:
  DefaultDialog(frmDefault& form, const DialogServices& services, QWidget* parent);

 protected:
  void refresh() override;

 private:
  /// A control with the field that it shows.
  struct Flag {
    QCheckBox* box;
    bool frmDefault::*field;
  };
  struct Choice {
    QButtonGroup* buttons;
    int frmDefault::*field;
  };

  void addFlag(QVBoxLayout& column, const char* name, const QString& text, bool frmDefault::*field);
  QButtonGroup* addChoice(int frmDefault::*field);
  void addOption(QVBoxLayout& column, QButtonGroup& group, const char* name, const QString& text);
  QWidget* backupPart();
  QWidget* splitPart();
  QWidget* fileSystemPart();
  QWidget* restorePart();
  QComboBox* addSizes(const char* name, std::span<const int> megabytes, int frmDefault::*field);

  frmDefault& form_;
  DialogServices services_;
  std::vector<Flag> flags_;
  std::vector<Choice> choices_;
  std::vector<std::pair<QComboBox*, int frmDefault::*>> lists_;
  std::vector<QWidget*> fileSystemTexts_;  ///< by option
};

}  // namespace korvenal::ui
