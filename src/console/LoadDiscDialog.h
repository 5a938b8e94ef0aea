#pragma once

#include <string>
#include <vector>

#include "console/Answers.h"
#include "console/Screen.h"
#include "device/frmLoadDisc.h"

namespace korvenal::console {

/// The prompt for discs in the terminal: tells what to load and what lies in the drives, and
/// serves the trays by the person's words until the prompt is closed.
class LoadDiscDialog {
 public:
  LoadDiscDialog(frmLoadDisc& form, Screen& screen, Answers& answers)
      : form_(form), screen_(screen), answers_(answers) {}

  /// Without `mayAgree` nobody agrees to the prompt unasked.
  void run(bool mayAgree);
  /// What this prompt asks for. A run that asks for the same thing again has made no progress.
  std::string request() const { return form_.DESC[0] + "\n" + std::to_string(form_.FromDisc); }

 private:
  void doShowPrompt();
  void doShowDrives();
  void doShowShelf();
  void doAct(const std::string& line);
  void doInsertBlank(int row, const std::string& typeName);
  bool doActOnDrive(const std::vector<std::string>& words);
  int rowOf(const std::string& drive) const;

  frmLoadDisc& form_;
  Screen& screen_;
  Answers& answers_;
};

}  // namespace korvenal::console
