#include "ui/TaskCard.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int WordWrap = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

}  // namespace

TaskCard::TaskCard(const QString& name, const QString& explanation, const QIcon& icon,
                   QWidget* parent)
    : QAbstractButton(parent), explanation_(explanation) {
  setText(name);
  setIcon(icon);
  setAccessibleDescription(explanation);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

QFont TaskCard::titleFont() const {
  QFont large = font();
  large.setBold(true);
  large.setPointSizeF(large.pointSizeF() * 1.15);
  return large;
}

int TaskCard::margin() const {
  return fontMetrics().height() * 3 / 4;
}

int TaskCard::iconSide() const {
  return fontMetrics().height() * 5 / 2;
}

QRect TaskCard::textArea(int width) const {
  const int left = 2 * margin() + iconSide();
  return {left, margin(), std::max(width - left - margin(), fontMetrics().averageCharWidth() * 12),
          QWIDGETSIZE_MAX};
}

int TaskCard::heightForWidth(int width) const {
  const QRect area = textArea(width);
  const int title = QFontMetrics(titleFont()).boundingRect(area, WordWrap, text()).height();
  const int below = fontMetrics().boundingRect(area, WordWrap, explanation_).height();
  return std::max(title + fontMetrics().height() / 4 + below, iconSide()) + 2 * margin();
}

QSize TaskCard::sizeHint() const {
  const int width = fontMetrics().averageCharWidth() * 46;
  return {width, heightForWidth(width)};
}

QSize TaskCard::minimumSizeHint() const {
  const int width = fontMetrics().averageCharWidth() * 30;
  return {width, heightForWidth(width)};
}

void TaskCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor accent = palette().color(QPalette::Highlight);
  const bool lit = isEnabled() && (underMouse() || hasFocus());
  QColor ground = palette().color(QPalette::Base);
  if (isDown() && isEnabled()) ground = palette().color(QPalette::Midlight);
  painter.setBrush(ground);
  const qreal line = hasFocus() ? 2 : 1;
  painter.setPen(QPen(lit ? accent : palette().color(QPalette::Mid), line));
  const qreal radius = margin() / 2.0;
  painter.drawRoundedRect(QRectF(rect()).adjusted(line, line, -line, -line), radius, radius);

  icon().paint(&painter, QRect(margin(), margin(), iconSide(), iconSide()), Qt::AlignCenter,
               isEnabled() ? QIcon::Normal : QIcon::Disabled);
  QRect area = textArea(width());
  painter.setFont(titleFont());
  const auto group = isEnabled() ? QPalette::Normal : QPalette::Disabled;
  painter.setPen(palette().color(group, QPalette::Text));
  QRect title;
  painter.drawText(area, WordWrap, text(), &title);
  area.setTop(title.bottom() + fontMetrics().height() / 4);
  painter.setFont(font());
  painter.setPen(isEnabled() ? Theme::explanation(palette())
                             : palette().color(QPalette::Disabled, QPalette::Text));
  painter.drawText(area, WordWrap, explanation_);
}

/// Enter presses a card as the space bar does.
void TaskCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

void TaskCard::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::FontChange) updateGeometry();
}

}  // namespace korvenal::ui
