#include "ui/FormDialogs.h"

namespace korvenal::ui {

std::unique_ptr<FormDialog> makeFormDialog(Form&, const DialogServices&, QWidget*) {
  return nullptr;
}

}  // namespace korvenal::ui
