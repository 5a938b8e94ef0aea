#pragma once

#include "burn/frmNotice.h"
#include "ui/FormDialog.h"

class QCheckBox;

namespace korvenal::ui {

/// The notice before a burn.
class NoticeDialog : public FormDialog {
  Q_OBJECT
 public:
  NoticeDialog(frmNotice& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  frmNotice& form_;
  QCheckBox* ckShowNoMore_;
};

}  // namespace korvenal::ui
