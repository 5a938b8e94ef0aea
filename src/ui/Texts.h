#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace korvenal::ui {

/// The program's texts are UTF-8; names that are not show their odd bytes as replacement marks.
inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
/// A text with names in it: control characters show as \n, \x1B and the like.
inline QString shownText(std::string_view text) {
  return toQt(Text::escaped(text));
}
inline std::string fromQt(const QString& text) {
  return text.toStdString();
}

/// A tool tip that shows a text as it is: names and paths may look like markup. Long ones wrap.
inline QString toolTipText(const QString& text) {
  if (text.isEmpty()) return {};
  return QStringLiteral("<qt>") +
         text.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

}  // namespace korvenal::ui
