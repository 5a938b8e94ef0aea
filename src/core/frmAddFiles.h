#pragma once

#include <array>
#include <functional>
#include <string>

#include "core/ActionState.h"
#include "platform/Desktop.h"

namespace korvenal {

/// The worker dialog: runs one long piece of work (a scan, an estimate, the adding of items) under
/// a stop button. It closes when the work has set `TaskDone` or a stop is asked for.
class frmAddFiles : public Form {
 public:
  using Work = std::function<void(frmAddFiles&)>;

  /// Forgets a stop of earlier work; from here on each one counts.
  frmAddFiles(ActionState& state, Desktop& desktop, Work work);

  std::string caption;                 ///< by the worker mode
  std::array<std::string, 2> MsgGrid;  ///< what is being done, and with which path

  void doActivate() override;
  /// No close box here.
  void doCloseBox() override {}
  /// The stop button.
  void CMD();

  /// Shows both lines and lets the front end repaint. The text that stays is given as it is.
  void doShowLines(const std::string& first, const std::string& second);
  void doShowPath(const std::string& path);

  /// Tells that a name cannot be held on a disc. Cancel sets `StopAction`.
  void IgnoreUnicode(const std::string& name);

 private:
  ActionState& state_;
  Desktop& desktop_;
  Work work_;
};

}  // namespace korvenal
