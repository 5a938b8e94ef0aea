#pragma once

#include <string>

#include "platform/Form.h"

namespace korvenal {

/// Asks what to do with a file that goes on no disc whole.
class frmSplit : public Form {
 public:
  enum Choice { SplitIt = 0, SkipIt = 1, Stop = 2, SplitAll = 3 };

  std::string title = "Split or Skip?";
  std::string message;
  std::string sizeLabel = "File to Split:";
  std::string sizeText;
  std::string dateText;  ///< "Modified date:  2024-05-01 10:30"
  std::string fileName;  ///< last part of the path, for the icon
  int choice = SplitIt;  ///< also when the form is closed in any other way

  void pbSplitIt() { doChoose(SplitIt); }
  void pbSkipIt() { doChoose(SkipIt); }
  void pbStop() { doChoose(Stop); }
  void pbSplitAll() { doChoose(SplitAll); }

 private:
  void doChoose(Choice chosen) {
    choice = chosen;
    doClose();
  }
};

}  // namespace korvenal
