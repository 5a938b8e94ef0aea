#pragma once

#include <QString>

namespace korvenal::ui {

/// Tells the person's desktop about the program and its job files: a desktop entry, and the file
/// type
/// ".jbf" with its description and icon. Files that are there already with the same content are
/// left alone; failures are ignored.
/// @param dataFolder  the person's data folder ("~/.local/share")
/// @param executable  path of the program
void doRegisterFileTypes(const QString& dataFolder, const QString& executable);

/// The path as the command of a desktop entry has to give it.
QString quotedForDesktopEntry(const QString& path);

}  // namespace korvenal::ui
