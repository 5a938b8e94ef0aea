#pragma once

#include "device/frmPickDisc.h"
#include "ui/FormDialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace korvenal::ui {

class RecordTable;

/// The list of all discs of the shelf, searched as one types.
class PickDiscDialog : public FormDialog {
  Q_OBJECT
 public:
  PickDiscDialog(frmPickDisc& form, QWidget* parent);

 protected:
  void refresh() override;
  /// Keys that move in the list do so from the search field too.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void doBuildList();

  frmPickDisc& form_;
  QLineEdit* txName_;
  RecordTable* vsDisc_;
  QLabel* count_;
  QPushButton* pbOK_;
};

}  // namespace korvenal::ui
