#pragma once

#include "restore/frmReplace.h"
#include "ui/QuestionDialog.h"

class QBoxLayout;

namespace korvenal::ui {

/// The question about a file that already stands in the target folder: the two files side by side.
class ReplaceDialog : public QuestionDialog {
  Q_OBJECT
 public:
  ReplaceDialog(frmReplace& form, QWidget* parent);

 private:
  QWidget* filePanel(const char* name, const QString& title, const ReplaceFile& file);
};

}  // namespace korvenal::ui
