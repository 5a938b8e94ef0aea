#include "ui/EraseView.h"

namespace korvenal::ui {

EraseView::EraseView(const Context& context, QWidget* parent) : Page(context, parent) {}

void EraseView::refresh() {}

}  // namespace korvenal::ui
