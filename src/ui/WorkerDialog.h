#pragma once

#include "core/frmAddFiles.h"
#include "ui/FormDialog.h"

class QLabel;

namespace korvenal::ui {

/// Shows what a scan, an estimate or the adding of items is at, with the button that stops it.
class WorkerDialog : public FormDialog {
  Q_OBJECT
 public:
  WorkerDialog(frmAddFiles& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  frmAddFiles& form_;
  QLabel* doing_;
  QLabel* path_;
};

}  // namespace korvenal::ui
