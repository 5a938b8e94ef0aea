#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <iostream>

#include "Tour.h"

/// usage: korvenal-screenshots FOLDER
int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: korvenal-screenshots FOLDER\n";
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_STYLE_OVERRIDE", "Fusion");
  const QApplication application(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  const QDir pictures(QString::fromLocal8Bit(argv[1]));
  if (!pictures.mkpath(QStringLiteral("."))) return 1;
  const QTemporaryDir work(QDir::tempPath() + QStringLiteral("/home-XXXXXX"));
  korvenal::tools::Tour tour(work.path() + QLatin1Char('/'),
                             pictures.absolutePath() + QLatin1Char('/'));
  std::cout << tour.run() << " pictures\n";
  return 0;
}
