#pragma once

#include <QAbstractButton>

namespace korvenal::ui {

/// A large button: an icon, what it leads to, and a line that explains.
class TaskCard : public QAbstractButton {
  Q_OBJECT
 public:
  TaskCard(const QIcon& icon, const QString& title, const QString& explanation, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QFont titleFont() const;

  QString explanation_;
};

}  // namespace korvenal::ui
