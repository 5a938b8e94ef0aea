#include "SampleData.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace korvenal::tools {

namespace {

constexpr qint64 MiB = 1024 * 1024;

/// Hills under a sky, another one for each number.
QImage landscape(int number) {
  QImage image(1024, 768, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, 768);
  sky.setColorAt(0, QColor::fromHsv((200 + number * 13) % 360, 140, 230));
  sky.setColorAt(1, QColor::fromHsv((30 + number * 7) % 360, 60, 250));
  painter.fillRect(image.rect(), sky);
  for (int hill = 0; hill < 4; ++hill) {
    QPainterPath path;
    path.moveTo(0, 768);
    for (int x = 0; x <= 1024; x += 32)
      path.lineTo(x, 420 + hill * 80 + 60 * std::sin((x + number * 97 + hill * 211) / 130.0));
    path.lineTo(1024, 768);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsv((100 + number * 5 + hill * 9) % 360, 120, 170 - hill * 30));
    painter.drawPath(path);
  }
  return image;
}

void makePictures(const QDir& folder, const QString& name, int count, int seed) {
  folder.mkpath(name);
  for (int i = 1; i <= count; ++i)
    landscape(seed + i).save(
        folder.filePath(QStringLiteral("%1/IMG_%2.jpg").arg(name).arg(2400 + i)), "JPG", 88);
}

void makeText(const QDir& folder, const QString& name, int lines) {
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::WriteOnly)) return;
  for (int i = 0; i < lines; ++i)
    file.write(QStringLiteral("Line %1 of %2.\n").arg(i + 1).arg(name).toUtf8());
}

void makeSparse(const QDir& folder, const QString& name, qint64 bytes) {
  QFile file(folder.filePath(name));
  if (file.open(QIODevice::WriteOnly)) file.resize(bytes);
}

}  // namespace

void makeSampleData(const QString& folder) {
  const QDir root(folder);
  root.mkpath(QStringLiteral("Documents/Letters"));
  root.mkpath(QStringLiteral("Music"));
  root.mkpath(QStringLiteral("Films"));
  makePictures(root, QStringLiteral("Photos 2025/Winter in the hills"), 14, 0);
  makePictures(root, QStringLiteral("Photos 2025/Sea"), 18, 40);
  makePictures(root, QStringLiteral("Photos 2026"), 9, 80);
  for (const char* name : {"Taxes 2025.ods", "Garden plan.pdf", "Recipes.txt"})
    makeText(root, QStringLiteral("Documents/") + QLatin1String(name), 900);
  for (const char* name : {"To the council.odt", "To Ann.odt"})
    makeText(root, QStringLiteral("Documents/Letters/") + QLatin1String(name), 300);
  for (int i = 1; i <= 6; ++i)
    makeSparse(root, QStringLiteral("Music/Evening %1.flac").arg(i), 24 * MiB);
  makeSparse(root, QStringLiteral("Films/Summer at the lake.mkv"), 2300 * MiB);
  makeText(root, QStringLiteral("notes.txt"), 200);
}

}  // namespace korvenal::tools
