#include "ui/FileTypes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

namespace korvenal::ui {

namespace {

QByteArray content(const QString& file) {
  QFile source(file);
  return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

/// True when the file was missing or another one, and is now this one.
bool doPut(const QString& file, const QByteArray& wanted) {
  if (wanted.isEmpty() || content(file) == wanted) return false;
  QDir().mkpath(QFileInfo(file).path());
  QSaveFile target(file);
  return target.open(QIODevice::WriteOnly) && target.write(wanted) == wanted.size() &&
         target.commit();
}

QByteArray desktopEntry(const QString& executable) {
  QByteArray entry = content(QStringLiteral(":/packaging/korvenal.desktop"));
  return entry.replace("Exec=korvenal\n",
                       "Exec=" + quotedForDesktopEntry(executable).toUtf8() + "\n");
}

/// The desktop reads file types from a cache that this tool makes.
void doUpdateFileTypes(const QString& mimeFolder) {
  QProcess update;
  update.setProgram(QStandardPaths::findExecutable(QStringLiteral("update-mime-database")));
  if (update.program().isEmpty()) return;
  update.setArguments({mimeFolder});
  update.setStandardOutputFile(QProcess::nullDevice());
  update.setStandardErrorFile(QProcess::nullDevice());
  update.startDetached();
}

}  // namespace

QString quotedForDesktopEntry(const QString& path) {
  QString quoted;
  for (const QChar c : path) {
    // Once for the quotes of the command, and once more since the entry has escapes of its own.
    if (QStringLiteral("\"`$\\").contains(c)) quoted += QStringLiteral("\\\\");
    if (c == QLatin1Char('\\')) quoted += c;
    if (c == QLatin1Char('%')) quoted += c;
    quoted += c;
  }
  return QLatin1Char('"') + quoted + QLatin1Char('"');
}

void doRegisterFileTypes(const QString& dataFolder, const QString& executable) {
  doPut(dataFolder + QStringLiteral("/applications/korvenal.desktop"), desktopEntry(executable));
  const QString icons = dataFolder + QStringLiteral("/icons/hicolor/scalable/");
  doPut(icons + QStringLiteral("apps/korvenal.svg"),
        content(QStringLiteral(":/icons/korvenal.svg")));
  doPut(icons + QStringLiteral("mimetypes/application-x-korvenal2dvd.svg"),
        content(QStringLiteral(":/packaging/application-x-korvenal2dvd.svg")));
  const QString mime = dataFolder + QStringLiteral("/mime");
  if (doPut(mime + QStringLiteral("/packages/korvenal.xml"),
            content(QStringLiteral(":/packaging/korvenal.xml"))))
    doUpdateFileTypes(mime);
}

}  // namespace korvenal::ui
