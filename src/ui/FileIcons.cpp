#include "ui/FileIcons.h"

#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr qsizetype IconsKept = 4096;  ///< extensions are those of a foreign index

const QString PictureIcon = QStringLiteral("image-x-generic");

QString extensionOf(const QString& name) {
  const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
  return dot < 0 ? QString() : name.mid(dot).toLower();
}

QIcon plainFile() {
  return Theme::icon(QStringLiteral("text-x-generic"));
}

}  // namespace

QIcon FileIcons::folder() const {
  return Theme::icon(QStringLiteral("folder"));
}

QIcon FileIcons::ofType(const QString& name) const {
  const QString extension = extensionOf(name);
  if (const auto known = known_.constFind(extension); known != known_.constEnd()) return *known;
  const QMimeType type =
      types_.mimeTypeForFile(QStringLiteral("file") + extension, QMimeDatabase::MatchExtension);
  QIcon icon = Theme::desktopIcon(type.iconName());
  if (icon.isNull()) icon = Theme::desktopIcon(type.genericIconName());
  if (icon.isNull() && type.genericIconName() == PictureIcon) icon = Theme::ownIcon(PictureIcon);
  if (icon.isNull()) icon = plainFile();
  if (known_.size() >= IconsKept) known_.clear();
  known_.insert(extension, icon);
  return icon;
}

QIcon FileIcons::stock(const QString& name) const {
  return extensionOf(name) == QStringLiteral(".exe")
             ? Theme::icon(QStringLiteral("application-x-executable"))
             : plainFile();
}

}  // namespace korvenal::ui
