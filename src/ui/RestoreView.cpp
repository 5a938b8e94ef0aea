#include "ui/RestoreView.h"

namespace korvenal::ui {

RestoreView::RestoreView(const Context& context, QWidget* parent) : Page(context, parent) {}

void RestoreView::refresh() {}

}  // namespace korvenal::ui
