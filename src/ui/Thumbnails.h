#pragma once

#include <QCache>
#include <QIcon>
#include <QObject>
#include <QSet>
#include <QThreadPool>

namespace korvenal::ui {

/// Small pictures of image files, made on threads of their own while the window goes on. Only what
/// is asked for is made.
class Thumbnails : public QObject {
  Q_OBJECT
 public:
  static constexpr int Pixels = 96;

  explicit Thumbnails(QObject* parent = nullptr);
  ~Thumbnails() override;

  /// The picture when it is made; null before, and for what is no image. Asking begins the work.
  QIcon of(const QString& path);
  /// What is wanted no longer is not made.
  void forgetWanted();

 signals:
  void made(const QString& path);

 private:
  void take(const QString& path, const QImage& image);

  QThreadPool workers_;
  QCache<QString, QIcon> known_;
  QSet<QString> wanted_;
};

}  // namespace korvenal::ui
