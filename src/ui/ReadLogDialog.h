#pragma once

#include "restore/frmReadLog.h"
#include "ui/FormDialog.h"
#include "ui/TableModel.h"

class QLabel;
class QPushButton;
class QTableView;

namespace korvenal::ui {

/// The choice between several indexes.
class ReadLogDialog : public FormDialog {
  Q_OBJECT
 public:
  ReadLogDialog(frmReadLog& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  frmReadLog& form_;
  TableModel model_;
  QTableView* vsIndex_;
  QLabel* message_;
  QPushButton* pbOK_;
  QPushButton* pbCancel_;
};

}  // namespace korvenal::ui
