#pragma once

#include "plan/frmSplit.h"
#include "ui/QuestionDialog.h"

namespace korvenal::ui {

/// The question what to do with a file that goes on no disc whole.
class SplitDialog : public QuestionDialog {
  Q_OBJECT
 public:
  SplitDialog(frmSplit& form, QWidget* parent);
};

}  // namespace korvenal::ui
