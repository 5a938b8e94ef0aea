#pragma once

#include "plan/frmEstimateInfo.h"
#include "ui/DiscContentsModel.h"
#include "ui/FormDialog.h"
#include "ui/TableModel.h"

class QCheckBox;
class QTableView;

namespace korvenal::ui {

/// The report of an estimate: the discs with their bars, and what goes on the one selected.
class EstimateDialog : public FormDialog {
  Q_OBJECT
 public:
  EstimateDialog(frmEstimateInfo& form, QWidget* parent);

 protected:
  void refresh() override;

 private:
  QWidget* totals();
  QWidget* leftOut();
  QWidget* discs();
  QWidget* contents();
  QTableView* addTable(const char* name, QAbstractItemModel& model);

  frmEstimateInfo& form_;
  TableModel discModel_;
  DiscContentsModel contentsModel_;
  QTableView* vsDisc_ = nullptr;
  QTableView* vsDContents_ = nullptr;
  QCheckBox* chkShowInfo_ = nullptr;
  QCheckBox* chkShowPath_ = nullptr;
};

}  // namespace korvenal::ui
