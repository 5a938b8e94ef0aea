#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace korvenal::ui {

/// The letters that lead to more than one thing in view of a window: "Alt+R: D&rive: / &Refresh".
/// Pressing such a letter only moves about instead of doing what its underline says.
std::vector<std::string> clashingMnemonics(const QWidget& window);

}  // namespace korvenal::ui
