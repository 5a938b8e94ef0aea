#include "ui/JobView.h"

namespace korvenal::ui {

JobView::JobView(const Context& context, QWidget* parent) : Page(context, parent) {}

void JobView::refresh() {}

}  // namespace korvenal::ui
