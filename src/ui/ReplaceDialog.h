#pragma once

#include "restore/frmReplace.h"
#include "ui/FormDialog.h"

namespace korvenal::ui {

/// The question about a file that already stands in the target folder.
class ReplaceDialog : public FormDialog {
  Q_OBJECT
 public:
  ReplaceDialog(frmReplace& form, QWidget* parent);

 protected:
  void refresh() override {}
};

}  // namespace korvenal::ui
