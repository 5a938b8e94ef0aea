#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace korvenal::ui {

/// The program's texts are UTF-8; names that are not show their odd bytes as replacement marks.
inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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
