#pragma once

#include "platform/Table.h"
#include "ui/Page.h"

namespace korvenal::ui {

class GridView;

/// The schedule page: its table and menu. Nothing stands behind them: no backup starts by itself.
class ScheduleView : public Page {
  Q_OBJECT
 public:
  explicit ScheduleView(const Context& context, QWidget* parent = nullptr);

  void refresh() override {}

 private:
  Table schedule_;
};

}  // namespace korvenal::ui
