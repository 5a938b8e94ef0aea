#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// A run page: its discs, its progress, events, records and report.
class RunView : public Page {
  Q_OBJECT
 public:
  /// Action 0 backup, 1 restore, 2 erase.
  RunView(int action, const Context& context, QWidget* parent = nullptr);

  void refresh() override;

 private:
  int action_;
};

}  // namespace korvenal::ui
