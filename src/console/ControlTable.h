#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/frmMain.h"

namespace korvenal::console {

/// A control of a page that `set` reaches by its name.
struct Control {
  std::string name;
  /// What `show` prints.
  std::function<std::string()> value;
  /// Applies the rules of the page. False, with nothing changed, for what the control cannot hold.
  std::function<bool(const std::string&)> set;
};

/// The controls of the backup page.
std::vector<Control> backupControls(frmMain& main);
/// The controls of the restore page.
std::vector<Control> restoreControls(frmMain& main);

}  // namespace korvenal::console
