#include "Camera.h"

#include <QApplication>
#include <QPixmap>
#include <QWidget>
#include <utility>

namespace korvenal::tools {

namespace {

QPalette lightPalette() {
  QPalette palette(QColor(0xf3, 0xf3, 0xf4));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf8, 0xfa));
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

QPalette darkPalette() {
  QPalette palette(QColor(0x2b, 0x2d, 0x31));
  palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
  palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x27, 0x2b));
  palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7d, 0xbf));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0xa0, 0xa8));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x7d, 0x82, 0x8a));
  return palette;
}

}  // namespace

Camera::Camera(QString folder)
    : folder_(std::move(folder)), light_(lightPalette()), dark_(darkPalette()) {
  QApplication::setPalette(light_);
}

void Camera::takeOne(QWidget& window, const QString& file) {
  // A palette that changed reaches every widget by events; none of them is a person's.
  QCoreApplication::sendPostedEvents();
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  if (window.grab().save(folder_ + file)) ++taken_;
}

void Camera::take(QWidget& window, const QString& name) {
  takeOne(window, name + QStringLiteral(".png"));
  QApplication::setPalette(dark_);
  takeOne(window, name + QStringLiteral("-dark.png"));
  QApplication::setPalette(light_);
}

}  // namespace korvenal::tools
