#pragma once

#include <array>
#include <string>

#include "core/ActionState.h"
#include "platform/Form.h"
#include "platform/Text.h"

namespace korvenal {

/// The answer about a file that already stands in the target folder, as kept in `WorkerMode`.
enum ReplaceAnswer : int {
  ReplaceNo = 0,
  ReplaceYes = 1,
  ReplaceCancel = 2,  ///< no, and the run stops
  ReplaceAll = 3,     ///< yes, also for what follows
};

/// One of the two files that the question compares.
struct ReplaceFile {
  std::string name;  ///< for the icon
  std::string sizeText;
  std::string dateText;  ///< "Modified date:  2026-11-22 10:00"
};

/// The question whether to replace a file that already stands in the target folder.
class frmReplace : public Form {
 public:
  /// `existing` stands in the target folder, `onDisc` would replace it.
  frmReplace(ActionState& state, const std::string& fileName, ReplaceFile existing,
             ReplaceFile onDisc)
      : message("The file '" + Text::escaped(fileName) + "' is existing."),
        files{std::move(existing), std::move(onDisc)},
        state_(state) {
    state_.WorkerMode = ReplaceNo;
  }

  std::string message;
  std::array<ReplaceFile, 2> files;  ///< the existing one, the one on disc

  void pbYes() { answer(ReplaceYes); }
  void pbNo() { answer(ReplaceNo); }
  void pbCancel() { answer(ReplaceCancel); }
  void pbReplaceAll() { answer(ReplaceAll); }
  void doCloseBox() override { pbNo(); }

 private:
  void answer(ReplaceAnswer value) {
    state_.WorkerMode = value;
    doClose();
  }

  ActionState& state_;
};

}  // namespace korvenal
