#include "ui/DiscBar.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace korvenal::ui {

namespace {

constexpr int RowsInView = 4;
constexpr int EmptyOpacity = 36;  ///< of 255

}  // namespace

void paintDiscFill(QPainter& painter, const QRectF& rect, const QPalette& palette, double percent,
                   RunDiscState state) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal radius = rect.height() / 3;
  // Text thinned out stands off from any ground, light or dark.
  QColor empty = palette.color(QPalette::WindowText);
  empty.setAlpha(EmptyOpacity);
  painter.setPen(Qt::NoPen);
  painter.setBrush(empty);
  painter.drawRoundedRect(rect, radius, radius);
  const qreal part = std::min(percent, 100.0) / 100.0;
  if (percent < 0) {
    painter.setBrush(QBrush(Theme::discColor(state, palette), Qt::BDiagPattern));
    painter.drawRoundedRect(rect, radius, radius);
  } else if (part > 0) {
    // A short piece keeps the round ends of the whole.
    QPainterPath whole;
    whole.addRoundedRect(rect, radius, radius);
    painter.setClipPath(whole);
    QRectF filled = rect;
    filled.setWidth(rect.width() * part);
    painter.fillRect(filled, Theme::discColor(state, palette));
  }
  painter.restore();
}

DiscBar::DiscBar(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  way_.setDuration(WayMilliseconds);
  connect(&way_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
    painted_ = value.toDouble();
    update();
  });
}

void DiscBar::doMoveTo(double percent) {
  way_.stop();
  const bool onward = fill_.state == RunDiscState::Writing && painted_ >= 0 && percent > painted_;
  if (!onward || !isVisible()) {
    painted_ = percent;
    return;
  }
  way_.setStartValue(painted_);
  way_.setEndValue(percent);
  way_.start();
}

void DiscBar::setFill(const DiscFill& fill) {
  if (fill == fill_) return;
  const bool moved = fill.percent != fill_.percent || fill.state != fill_.state;
  fill_ = fill;
  if (moved) doMoveTo(fill.percent);
  setAccessibleName(fill.label);
  setAccessibleDescription(fill.text);
  setToolTip(fill.text);
  update();
}

QSize DiscBar::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  return {metrics.averageCharWidth() * 90, metrics.height() + metrics.height() / 2};
}

QSize DiscBar::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 40, sizeHint().height()};
}

void DiscBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QFontMetrics metrics = fontMetrics();
  const int gap = metrics.averageCharWidth();
  const int labelWidth = metrics.horizontalAdvance(QStringLiteral("Backup #000")) + gap;
  const int textWidth = std::max(width() / 2 - labelWidth, metrics.averageCharWidth() * 24);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QRect(0, 0, labelWidth, height()), Qt::AlignLeft | Qt::AlignVCenter,
                   fill_.label);
  const int barHeight = std::max(8, metrics.height() * 2 / 3);
  const QRectF bar(labelWidth, (height() - barHeight) / 2.0,
                   std::max(20, width() - labelWidth - textWidth - 2 * gap), barHeight);
  paintDiscFill(painter, bar, palette(), painted_, fill_.state);
  const QRect textRect(static_cast<int>(bar.right()) + 2 * gap, 0, textWidth, height());
  if (fill_.state != RunDiscState::Planned)
    painter.setPen(fill_.state == RunDiscState::Writing ? palette().color(QPalette::WindowText)
                                                        : Theme::discColor(fill_.state, palette()));
  painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                   metrics.elidedText(fill_.text, Qt::ElideRight, textRect.width()));
}

DiscStrip::DiscStrip(QWidget* parent)
    : QWidget(parent), scroll_(new QScrollArea(this)), inner_(new QWidget), column_(nullptr) {
  column_ = new QVBoxLayout(inner_);
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(0);
  column_->addStretch();
  scroll_->setWidget(inner_);
  scroll_->setWidgetResizable(true);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll_);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setVisible(false);
}

void DiscStrip::setDiscs(const std::vector<DiscFill>& discs) {
  while (bars_.size() > discs.size()) {
    delete bars_.back();
    bars_.pop_back();
  }
  while (bars_.size() < discs.size()) {
    auto* bar = new DiscBar(inner_);
    bar->setObjectName(QStringLiteral("disc%1").arg(bars_.size() + 1));
    column_->insertWidget(static_cast<int>(bars_.size()), bar);
    bars_.push_back(bar);
  }
  int writing = -1;
  for (std::size_t i = 0; i < discs.size(); ++i) {
    bars_[i]->setFill(discs[i]);
    if (discs[i].state == RunDiscState::Writing) writing = static_cast<int>(i);
  }
  if (!bars_.empty()) {
    const int rows = std::min(static_cast<int>(bars_.size()), RowsInView);
    setFixedHeight(rows * bars_.front()->sizeHint().height());
  }
  setVisible(!bars_.empty());
  if (writing != shown_ && writing >= 0) {
    inner_->layout()->activate();
    scroll_->ensureWidgetVisible(bars_[static_cast<std::size_t>(writing)], 0, 0);
  }
  shown_ = writing;
}

}  // namespace korvenal::ui
