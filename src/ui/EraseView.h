#pragma once

#include "ui/Page.h"

class QButtonGroup;
class QGroupBox;

namespace korvenal::ui {

class RunView;

/// The erase page: the choice of the mode above the run.
class EraseView : public Page {
  Q_OBJECT
 public:
  explicit EraseView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  QGroupBox* EraseMode_;
  QButtonGroup* optEraseMode_;
  RunView* run_;
};

}  // namespace korvenal::ui
