#pragma once

#include <QAbstractButton>

namespace korvenal::ui {

/// A large button with an icon, a name and a sentence that explains it.
class TaskCard : public QAbstractButton {
  Q_OBJECT
 public:
  TaskCard(const QString& name, const QString& explanation, const QIcon& icon,
           QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QFont titleFont() const;
  int margin() const;
  int iconSide() const;
  QRect textArea(int width) const;

  QString explanation_;
};

}  // namespace korvenal::ui
