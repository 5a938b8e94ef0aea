#pragma once

#include <string>
#include <vector>

#include "console/Answers.h"
#include "console/ConsoleDesktop.h"
#include "console/Screen.h"

namespace korvenal {
class frmAddFiles;
class frmDevice;
class frmEstimateInfo;
class frmLoadDisc;
class frmNotice;
class frmReadLog;
class frmReplace;
class frmSplit;
}  // namespace korvenal

namespace korvenal::console {

/// Shows every form of the program in the terminal: what it says as lines, its buttons as words to
/// answer with.
class FormPresenter : public FormShower {
 public:
  FormPresenter(Screen& screen, Answers& answers) : screen_(screen), answers_(answers) {}

  void show(Form& form) override;
  /// Presses the stop button of the form in front. False when it has none.
  bool doInterrupt();
  /// Paints what the form in front is doing. False when it does nothing by itself.
  bool doPaintProgress();
  /// A new command begins. True when the last one was given up, because its run asked for the same
  /// disc again and again with nobody there to help.
  bool doBeginCommand();

 private:
  void doRun(Form& form);
  void doShowLoadDisc(frmLoadDisc& form);
  void doShowNotice(frmNotice& form);
  void doShowSplit(frmSplit& form);
  void doShowEstimate(frmEstimateInfo& form);
  void doShowReplace(frmReplace& form);
  void doShowIndexList(frmReadLog& form);
  void doShowDevice(frmDevice& form);

  Screen& screen_;
  Answers& answers_;
  std::vector<Form*> open_;  ///< the last one is in front
  std::string lastRequest_;  ///< of the prompt for discs before
  int repeats_ = 0;          ///< prompts in a row that asked for the same
  bool gaveUp_ = false;
};

}  // namespace korvenal::console
