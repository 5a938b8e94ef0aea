#pragma once

#include <QHash>
#include <QIcon>
#include <QMimeDatabase>

namespace korvenal::ui {

/// Pictures of files by their names alone; nothing is looked up on a disk. One look-up an
/// extension, kept.
class FileIcons {
 public:
  QIcon folder() const;
  /// The icon of the kind of file that the name's extension stands for.
  QIcon ofType(const QString& name) const;
  /// One of two: programs (".exe") and all other files.
  QIcon stock(const QString& name) const;

 private:
  QMimeDatabase types_;
  mutable QHash<QString, QIcon> known_;  ///< by extension in lower case
};

}  // namespace korvenal::ui
