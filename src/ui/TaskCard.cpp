#include "ui/TaskCard.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "ui/Theme.h"

namespace korvenal::ui {

TaskCard::TaskCard(const QIcon& icon, const QString& title, const QString& explanation,
                   QWidget* parent)
    : QAbstractButton(parent), explanation_(explanation) {
  setIcon(icon);
  setText(title);
  setAccessibleDescription(explanation);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QFont TaskCard::titleFont() const {
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.25);
  large.setBold(true);
  return large;
}

QSize TaskCard::sizeHint() const {
  const int line = fontMetrics().height();
  return {fontMetrics().averageCharWidth() * 40, line * 9 / 2};
}

bool TaskCard::event(QEvent* event) {
  if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) update();
  return QAbstractButton::event(event);
}

void TaskCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

void TaskCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette colors = palette();
  const bool lit = isEnabled() && (underMouse() || hasFocus());
  painter.setPen(lit ? QPen(colors.color(QPalette::Highlight), 2)
                     : QPen(colors.color(QPalette::Mid), 1));
  painter.setBrush(isDown() ? colors.color(QPalette::AlternateBase) : colors.color(QPalette::Base));
  const int line = fontMetrics().height();
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), line / 2.5, line / 2.5);
  const int picture = line * 2;
  const QRect pictureRect(line, (height() - picture) / 2, picture, picture);
  icon().paint(&painter, pictureRect, Qt::AlignCenter,
               isEnabled() ? QIcon::Normal : QIcon::Disabled);
  const int left = pictureRect.right() + line;
  const QRect texts(left, 0, width() - left - line / 2, height());
  painter.setPen(colors.color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
  painter.setFont(titleFont());
  const int half = height() / 2;
  painter.drawText(texts.adjusted(0, 0, 0, -half + line / 6), Qt::AlignLeft | Qt::AlignBottom,
                   text());
  painter.setFont(font());
  painter.setPen(Theme::explanation(colors));
  painter.drawText(texts.adjusted(0, half + line / 4, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                   fontMetrics().elidedText(explanation_, Qt::ElideRight, texts.width()));
}

}  // namespace korvenal::ui
