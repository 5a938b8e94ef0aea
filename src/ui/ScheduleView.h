#pragma once

#include "ui/Page.h"

namespace korvenal::ui {

/// The schedule page: its table and menu, empty.
class ScheduleView : public Page {
  Q_OBJECT
 public:
  explicit ScheduleView(const Context& context, QWidget* parent = nullptr);

  void refresh() override;
};

}  // namespace korvenal::ui
