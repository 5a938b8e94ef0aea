#pragma once

#include <QByteArray>
#include <QIconEngine>

namespace korvenal::ui {

/// Draws an SVG picture whose colour "currentColor" follows the palette of the moment, sharp at any
/// scale. A file that is missing draws nothing.
class TintedIconEngine : public QIconEngine {
 public:
  explicit TintedIconEngine(const QString& file);

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
  QIconEngine* clone() const override;

 private:
  QByteArray svg_;
};

}  // namespace korvenal::ui
