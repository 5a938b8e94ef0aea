#include "ui/StartPageView.h"

namespace korvenal::ui {

StartPageView::StartPageView(const Context& context, QWidget* parent) : Page(context, parent) {}

void StartPageView::refresh() {}

}  // namespace korvenal::ui
