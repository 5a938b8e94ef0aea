#include "Guide.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QPushButton>

namespace korvenal::tools {

namespace {

constexpr int LookMilliseconds = 15;

QAbstractButton* defaultButton(const QWidget& dialog) {
  for (auto* button : dialog.findChildren<QPushButton*>())
    if (button->isDefault() && button->isVisible() && button->isEnabled()) return button;
  return nullptr;
}

}  // namespace

Guide::Guide() {
  connect(&timer_, &QTimer::timeout, this, [this] { doLook(); });
  timer_.start(LookMilliseconds);
}

bool Guide::press(QWidget& in, const QString& button) {
  for (auto* candidate : in.findChildren<QAbstractButton*>()) {
    QString text = candidate->text();
    text.remove(QLatin1Char('&'));
    if (candidate->objectName() != button && text != button) continue;
    if (!candidate->isVisible() || !candidate->isEnabled()) continue;
    candidate->click();
    return true;
  }
  return false;
}

void Guide::doLook() {
  if (visiting_) return;
  QWidget* dialog = QApplication::activeModalWidget();
  // Work that ends by itself is only watched.
  const bool working = dialog != nullptr && dialog->objectName() == QStringLiteral("frmAddFiles");
  if (dialog == nullptr || working) {
    if (onRun && window != nullptr) {
      visiting_ = true;
      onRun(*window);
      visiting_ = false;
    }
    return;
  }
  const auto visit = visits_.find(dialog->objectName());
  if (visit != visits_.end()) {
    // A visit may open further dialogs, at which the guide looks as well.
    const Visit now = visit->second;
    now(*dialog);
  } else if (auto* button = defaultButton(*dialog)) {
    button->click();
  }
}

}  // namespace korvenal::tools
