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
class QBoxLayout;
class QComboBox;
class QHBoxLayout;
class QLabel;

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

  void addFlag(QBoxLayout& column, const char* name, const QString& text, bool frmDefault::*field);
  QButtonGroup* addChoice(int frmDefault::*field);
  void addOption(QBoxLayout& column, QButtonGroup& group, const char* name, const QString& text);
  QHBoxLayout* buttons();
  QWidget* backupPart();
  QWidget* splitPart();
  QWidget* fileSystemPart();
  QWidget* restorePart();
  /// A list of sizes behind its caption.
  void addSizes(QBoxLayout& row, const QString& caption, const char* name,
                std::span<const int> megabytes, int frmDefault::*field);

  frmDefault& form_;
  DialogServices services_;
  std::vector<Flag> flags_;
  std::vector<Choice> choices_;
  std::vector<std::pair<QComboBox*, int frmDefault::*>> lists_;
  std::vector<QLabel*> fileSystemTexts_;  ///< by option
};

}  // namespace korvenal::ui
