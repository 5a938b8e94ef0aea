#include "ui/Thumbnails.h"

#include <QImageReader>
#include <QPixmap>

namespace korvenal::ui {

namespace {

constexpr int MostKept = 2000;

QImage read(const QString& path) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.isValid())
    reader.setScaledSize(size.scaled(Thumbnails::Pixels, Thumbnails::Pixels, Qt::KeepAspectRatio));
  const QImage image = reader.read();
  return image.isNull() ? image
                        : image.scaled(Thumbnails::Pixels, Thumbnails::Pixels, Qt::KeepAspectRatio,
                                       Qt::SmoothTransformation);
}

}  // namespace

Thumbnails::Thumbnails(QObject* parent) : QObject(parent), known_(MostKept) {
  workers_.setMaxThreadCount(1);
}

Thumbnails::~Thumbnails() {
  workers_.clear();
  workers_.waitForDone();
}

QIcon Thumbnails::of(const QString& path) {
  if (const QIcon* icon = known_.object(path)) return *icon;
  if (wanted_.contains(path)) return {};
  wanted_.insert(path);
  workers_.start([this, path] {
    const QImage image = read(path);
    QMetaObject::invokeMethod(
        this, [this, path, image] { take(path, image); }, Qt::QueuedConnection);
  });
  return {};
}

void Thumbnails::forgetWanted() {
  workers_.clear();
  wanted_.clear();
}

void Thumbnails::take(const QString& path, const QImage& image) {
  wanted_.remove(path);
  known_.insert(path, new QIcon(image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image))));
  if (!image.isNull()) emit made(path);
}

}  // namespace korvenal::ui
