#include "ui/TintedIconEngine.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace korvenal::ui {

namespace {

QColor tintOf(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  switch (mode) {
    case QIcon::Disabled:
      return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
      return palette.color(QPalette::HighlightedText);
    default:
      return palette.color(QPalette::WindowText);
  }
}

}  // namespace

TintedIconEngine::TintedIconEngine(const QString& file) {
  QFile source(file);
  if (source.open(QIODevice::ReadOnly)) svg_ = source.readAll();
}

void TintedIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) {
  if (svg_.isEmpty()) return;
  QByteArray tinted = svg_;
  tinted.replace("currentColor", tintOf(mode).name().toLatin1());
  QSvgRenderer renderer(tinted);
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  renderer.render(painter, rect);
}

QPixmap TintedIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
  QPixmap picture(size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  paint(&painter, QRect(QPoint(), size), mode, state);
  return picture;
}

QIconEngine* TintedIconEngine::clone() const {
  return new TintedIconEngine(*this);
}

}  // namespace korvenal::ui
