#pragma once

#include <QPalette>
#include <QString>

class QWidget;

namespace korvenal::tools {

/// Takes pictures of windows, each in a light and in a dark palette.
class Camera {
 public:
  /// Pictures go into the folder, as "NAME.png" and "NAME-dark.png".
  explicit Camera(QString folder);

  void take(QWidget& window, const QString& name);
  int taken() const { return taken_; }

 private:
  void takeOne(QWidget& window, const QString& file);

  QString folder_;
  QPalette light_;
  QPalette dark_;
  int taken_ = 0;
};

}  // namespace korvenal::tools
