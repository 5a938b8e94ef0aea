#pragma once

#include "restore/RestoreFind.h"
#include "ui/FormDialog.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace korvenal::ui {

/// Asks for a name to find in the tree.
class FindDialog : public FormDialog {
  Q_OBJECT
 public:
  FindDialog(frmFind& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  frmFind& form_;
  QLineEdit* txName_;
  QCheckBox* matchCase_;
  QPushButton* pbOK_;
};

}  // namespace korvenal::ui
