#pragma once

#include <QDialog>
#include <QEventLoop>
#include <functional>

#include "platform/Form.h"

namespace korvenal::ui {

/// A dialog that shows a form: it draws the form's fields and passes on what the person does. The
/// form outlives it.
class FormDialog : public QDialog {
  Q_OBJECT
 public:
  FormDialog(Form& form, QWidget* parent);
  ~FormDialog() override;

  /// Shows the dialog over everything else until the form is closed.
  void runModal();

 protected:
  /// Draws the fields as they are now. Called after whatever may have changed them.
  virtual void refresh() = 0;
  /// Runs what the person asked for, and shows what became of it.
  void act(const std::function<void()>& wish);

  /// Escape and the close box: the form decides whether it closes.
  void reject() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void doSettle();
  void doRefreshSoon();

  Form& form_;
  QEventLoop loop_;
  bool refreshPending_ = false;
};

}  // namespace korvenal::ui
