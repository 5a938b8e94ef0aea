#include "ui/Theme.h"

#include "ui/TintedIconEngine.h"

namespace korvenal::ui {

namespace {

/// A colour for light grounds and one for dark grounds.
struct Pair {
  QColor light;
  QColor dark;
  QColor on(const QPalette& palette) const { return Theme::isDark(palette) ? dark : light; }
};

}  // namespace

bool Theme::isDark(const QPalette& palette) {
  return palette.color(QPalette::WindowText).lightness() >
         palette.color(QPalette::Window).lightness();
}

QColor Theme::discColor(RunDiscState state, const QPalette& palette) {
  switch (state) {
    case RunDiscState::Writing:
      return Pair{QColor(0x1a, 0x6f, 0xc4), QColor(0x5a, 0xa9, 0xf2)}.on(palette);
    case RunDiscState::Verified:
      return Pair{QColor(0x1e, 0x7d, 0x34), QColor(0x5c, 0xbf, 0x73)}.on(palette);
    case RunDiscState::Failed:
      return Pair{QColor(0xb3, 0x26, 0x1e), QColor(0xf2, 0x7e, 0x74)}.on(palette);
    case RunDiscState::Planned:
      break;
  }
  return Pair{QColor(0x6b, 0x72, 0x80), QColor(0x9a, 0xa3, 0xb2)}.on(palette);
}

QColor Theme::eventText(EventStyle::Color color, const QPalette& palette) {
  switch (color) {
    case EventStyle::Color::Red:
      return discColor(RunDiscState::Failed, palette);
    case EventStyle::Color::Blue:
      return discColor(RunDiscState::Writing, palette);
    case EventStyle::Color::Normal:
      break;
  }
  return palette.color(QPalette::Text);
}

QColor Theme::eventBackground(EventStyle::Background background, const QPalette& palette) {
  switch (background) {
    case EventStyle::Background::Orange:
      return Pair{QColor(0xff, 0xe9, 0xcf), QColor(0x4d, 0x37, 0x1c)}.on(palette);
    case EventStyle::Background::Yellow:
      return Pair{QColor(0xff, 0xfa, 0xdb), QColor(0x3f, 0x3b, 0x1f)}.on(palette);
    case EventStyle::Background::Green:
      return Pair{QColor(0xe2, 0xf5, 0xe4), QColor(0x1f, 0x3d, 0x26)}.on(palette);
    case EventStyle::Background::None:
      break;
  }
  return {};
}

QColor Theme::explanation(const QPalette& palette) {
  return Pair{QColor(0x59, 0x5f, 0x69), QColor(0xb0, 0xb7, 0xc3)}.on(palette);
}

QIcon Theme::desktopIcon(const QString& name) {
  // "hicolor" is what a desktop without a theme has: icons of applications, spread over hundreds of
  // folders, all of which a search for anything else goes through.
  const QString theme = QIcon::themeName();
  const bool hasTheme = !theme.isEmpty() && theme != QLatin1String("hicolor");
  return hasTheme ? QIcon::fromTheme(name) : QIcon();
}

QIcon Theme::icon(const QString& name) {
  const QIcon fromTheme = desktopIcon(name);
  return fromTheme.isNull() ? ownIcon(name) : fromTheme;
}

QIcon Theme::ownIcon(const QString& name) {
  return QIcon(new TintedIconEngine(QStringLiteral(":/icons/%1.svg").arg(name)));
}

}  // namespace korvenal::ui
