#pragma once

#include "plan/frmSplit.h"
#include "ui/FormDialog.h"

namespace korvenal::ui {

/// The question what to do with a file that goes on no disc whole.
class SplitDialog : public FormDialog {
  Q_OBJECT
 public:
  SplitDialog(frmSplit& form, QWidget* parent);

 protected:
  void refresh() override {}
};

}  // namespace korvenal::ui
