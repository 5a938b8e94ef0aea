#include "ui/ScheduleView.h"

namespace korvenal::ui {

ScheduleView::ScheduleView(const Context& context, QWidget* parent) : Page(context, parent) {}

void ScheduleView::refresh() {}

}  // namespace korvenal::ui
