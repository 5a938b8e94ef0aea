#include "console/FormPresenter.h"

#include "burn/frmNotice.h"
#include "console/LoadDiscDialog.h"
#include "console/TableText.h"
#include "core/frmAddFiles.h"
#include "device/frmDevice.h"
#include "device/frmLoadDisc.h"
#include "plan/frmEstimateInfo.h"
#include "plan/frmSplit.h"
#include "platform/Text.h"
#include "restore/frmReadLog.h"
#include "restore/frmReplace.h"

namespace korvenal::console {

void FormPresenter::show(Form& form) {
  open_.push_back(&form);
  form.doActivate();
  if (!form.isClosed()) doRun(form);
  open_.pop_back();
}

void FormPresenter::doRun(Form& form) {
  if (auto* loadDisc = dynamic_cast<frmLoadDisc*>(&form))
    doShowLoadDisc(*loadDisc);
  else if (auto* notice = dynamic_cast<frmNotice*>(&form))
    doShowNotice(*notice);
  else if (auto* split = dynamic_cast<frmSplit*>(&form))
    doShowSplit(*split);
  else if (auto* estimate = dynamic_cast<frmEstimateInfo*>(&form))
    doShowEstimate(*estimate);
  else if (auto* replace = dynamic_cast<frmReplace*>(&form))
    doShowReplace(*replace);
  else if (auto* indexes = dynamic_cast<frmReadLog*>(&form))
    doShowIndexList(*indexes);
  else if (auto* device = dynamic_cast<frmDevice*>(&form))
    doShowDevice(*device);
  else
    form.doCloseBox();
}

bool FormPresenter::doInterrupt() {
  if (open_.empty()) return false;
  if (auto* worker = dynamic_cast<frmAddFiles*>(open_.back())) {
    worker->CMD();
    return true;
  }
  if (auto* loadDisc = dynamic_cast<frmLoadDisc*>(open_.back())) {
    loadDisc->pbStop();
    return true;
  }
  return false;
}

bool FormPresenter::doPaintProgress() {
  const auto* worker = open_.empty() ? nullptr : dynamic_cast<frmAddFiles*>(open_.back());
  if (worker == nullptr) return false;
  screen_.progress(worker->MsgGrid[0] + " " + worker->MsgGrid[1]);
  return true;
}

bool FormPresenter::doBeginCommand() {
  const bool gaveUp = gaveUp_;
  gaveUp_ = false;
  lastRequest_.clear();
  repeats_ = 0;
  return gaveUp;
}

void FormPresenter::doShowLoadDisc(frmLoadDisc& form) {
  constexpr int MostRepeats = 2;
  LoadDiscDialog dialog(form, screen_, answers_);
  repeats_ = dialog.request() == lastRequest_ ? repeats_ + 1 : 0;
  lastRequest_ = dialog.request();
  const bool mayAgree = repeats_ < MostRepeats;
  // Erasing goes on for as long as somebody agrees to more.
  dialog.run(mayAgree && !form.isForMoreErasing());
  if (mayAgree || !answers_.agreesToAll()) return;
  gaveUp_ = true;
  screen_.line("The same disc is asked for again and again: given up.");
}

void FormPresenter::doShowNotice(frmNotice& form) {
  screen_.line(form.caption + ": " + form.text);
  const int chosen = answers_.choose({{"OK", "&Stop Action", form.ckShowNoMoreText}, 0, 0});
  if (chosen == 1) return form.pbStop();
  form.ckShowNoMore = chosen == 2;
  form.pbOK();
}

void FormPresenter::doShowSplit(frmSplit& form) {
  screen_.line(form.title + " " + form.message);
  screen_.line("  " + form.sizeLabel + " " + form.sizeText + ", " + form.dateText);
  switch (answers_.choose({{"S&plit It", "S&kip It", "&Stop", "Split &All"}, 0, 2})) {
    case frmSplit::SplitIt:
      return form.pbSplitIt();
    case frmSplit::SkipIt:
      return form.pbSkipIt();
    case frmSplit::SplitAll:
      return form.pbSplitAll();
    default:
      return form.pbStop();
  }
}

void FormPresenter::doShowEstimate(frmEstimateInfo& form) {
  screen_.line(form.caption);
  screen_.raw(tableText(form.vsDisc));
  form.pbClose();
}

void FormPresenter::doShowReplace(frmReplace& form) {
  screen_.line(form.message);
  for (const ReplaceFile& file : form.files)
    screen_.line("  " + file.sizeText + ", " + file.dateText);
  switch (answers_.choose({{"&Yes", "&No", "Cancel", "&Replace All"}, 0, 1})) {
    case 0:
      return form.pbYes();
    case 2:
      return form.pbCancel();
    case 3:
      return form.pbReplaceAll();
    default:
      return form.pbNo();
  }
}

void FormPresenter::doShowIndexList(frmReadLog& form) {
  std::vector<std::string> choices;
  for (int row = 1; row < form.vsIndex.Rows(); ++row) {
    std::string text;
    for (int column = ReadLogDrive; column <= ReadLogType; ++column)
      text += "  " + form.vsIndex.text(row, column);
    choices.push_back(std::to_string(row));
    screen_.line("  " + choices.back() + ":" + text);
  }
  choices.push_back("&Cancel");
  const int cancel = static_cast<int>(choices.size()) - 1;
  const int chosen = answers_.choose({choices, 0, cancel});
  if (chosen == cancel) return form.pbCancel();
  form.vsIndex.Row = chosen + 1;
  form.pbOK();
  if (!form.isClosed()) form.pbCancel();
}

void FormPresenter::doShowDevice(frmDevice& form) {
  screen_.line("Device settings (the command \"device\" changes them):");
  for (std::size_t i = 1; i < form.driveChoices.size(); ++i)
    screen_.line((static_cast<int>(i) == form.singleDrive ? "  * " : "    ") +
                 form.driveChoices[i]);
  const std::string& absent = form.absentSingleDrive();
  if (!absent.empty()) screen_.line("  * " + absent + ": is not there.");
  if (form.OptDevice == 0 && form.singleDrive == 0 && form.driveChoices.size() > 1) {
    std::vector<std::string> drives(form.driveChoices);
    // Nobody agrees unasked to burn in another drive than the one that was chosen.
    form.singleDrive = answers_.choose({std::move(drives), absent.empty() ? 1 : 0, 0});
  }
  form.pbOK();
  if (form.isClosed()) return;
  form.OptDevice = 0;  // the drives chosen cannot work together
  form.pbOK();
}

}  // namespace korvenal::console
