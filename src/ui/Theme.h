#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QString>

#include "app/RunDiscs.h"
#include "core/RunGrids.h"

namespace korvenal::ui {

/// The look of the program beyond the desktop's own: icons, and the few colours that mean
/// something. Every colour keeps its contrast on light and on dark palettes.
namespace Theme {

/// True for light text on a dark ground.
bool isDark(const QPalette& palette);
/// What has become of a disc; the same colour means the same everywhere.
QColor discColor(RunDiscState state, const QPalette& palette);
QColor eventText(EventStyle::Color color, const QPalette& palette);
/// Invalid for no background of its own.
QColor eventBackground(EventStyle::Background background, const QPalette& palette);
/// Text that explains: smaller in weight than what people look for.
QColor explanation(const QPalette& palette);

/// The icon of the desktop's theme with this standard name ("document-save"), or the program's own
/// when the theme has none.
QIcon icon(const QString& name);
/// The icon of the desktop's theme; null when it has none, and on a desktop without a theme.
QIcon desktopIcon(const QString& name);
/// The program's own icon: drawn for the palette at hand, at any scale.
QIcon ownIcon(const QString& name);

}  // namespace Theme

}  // namespace korvenal::ui
