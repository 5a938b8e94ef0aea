#pragma once

#include <functional>
#include <memory>

#include "platform/Desktop.h"
#include "ui/FormDialog.h"

namespace korvenal::ui {

/// What dialogs ask for beyond their form.
struct DialogServices {
  std::function<void(const std::string& topic)> showHelp;
  Desktop* desktop = nullptr;  ///< not owned; names the types of files
};

/// The dialog that shows a form. Null for a form that no dialog is known for.
std::unique_ptr<FormDialog> makeFormDialog(Form& form, const DialogServices& services,
                                           QWidget* parent);

}  // namespace korvenal::ui
