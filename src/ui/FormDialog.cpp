#include "ui/FormDialog.h"

#include <QCloseEvent>

namespace korvenal::ui {

FormDialog::FormDialog(Form& form, QWidget* parent) : QDialog(parent), form_(form) {
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  form_.onRepaint = [this] { doRefreshSoon(); };
}

FormDialog::~FormDialog() {
  form_.onRepaint = nullptr;
}

void FormDialog::runModal() {
  setWindowModality(Qt::ApplicationModal);
  refresh();
  // A dialog that was given a size keeps it.
  if (!testAttribute(Qt::WA_Resized)) adjustSize();
  show();
  form_.doActivate();
  refresh();
  // A form that closed while it was activated never enters the loop.
  while (!form_.isClosed()) loop_.exec();
  hide();
}

void FormDialog::act(const std::function<void()>& wish) {
  wish();
  doSettle();
}

void FormDialog::doSettle() {
  refresh();
  if (form_.isClosed()) loop_.quit();
}

void FormDialog::doRefreshSoon() {
  // Forms tell every path of a long walk; what is drawn is the last one before each repaint.
  if (refreshPending_) return;
  refreshPending_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        refreshPending_ = false;
        doSettle();
      },
      Qt::QueuedConnection);
}

void FormDialog::reject() {
  act([this] { form_.doCloseBox(); });
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

}  // namespace korvenal::ui
