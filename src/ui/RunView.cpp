#include "ui/RunView.h"

namespace korvenal::ui {

RunView::RunView(int action, const Context& context, QWidget* parent)
    : Page(context, parent), action_(action) {}

void RunView::refresh() {}

}  // namespace korvenal::ui
