#pragma once

#include "platform/Table.h"
#include "ui/Page.h"

namespace korvenal::ui {

class GridMenu;

/// The schedule page: a table that is always empty, and its menu.
class ScheduleView : public Page {
  Q_OBJECT
 public:
  explicit ScheduleView(const Context& context, QWidget* parent = nullptr);

  void refresh() override {}

 private:
  Table vsSchedule_;
};

}  // namespace korvenal::ui
