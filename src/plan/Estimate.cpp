#include "plan/Estimate.h"

#include "core/SizeText.h"
#include "plan/frmEstimateInfo.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int Cd = 0;
constexpr int Dvd = 1;
constexpr Fixed4 CdSuggestionBytes = 730'000'000;  ///< up to here a CD is suggested
constexpr int ManyDiscs = 5;                       ///< above it a DVD is suggested

}  // namespace

void Estimate::pbEstimate() {
  if (!job_.hasItems()) return;
  bool again = false;
  do {
    again = doPlan() && doSuggestDiscType();
    plan_.ScanMode = 0;
  } while (again);
  const bool ended = services_.state.StopAction || services_.state.LimitExceeded;
  if (!ended && frmEstimateInfo::isWanted(services_.profile)) pbEstimateInfo();
}

bool Estimate::doPlan() {
  ActionState& state = services_.state;
  job_.doSetEstimated(false);
  plan_.clearTotals();
  state.StopAction = state.LimitExceeded = false;
  state.TaskError = 0;
  plan_.ScanMode = 1;
  state.WorkerMode = WorkerErase;  // for the worker dialog: estimate
  frmAddFiles worker(state, services_.desktop,
                     [this](frmAddFiles& form) { scan_.doScanFiles(form); });
  {
    const FlagScope busy(state.ActionBusy);
    services_.desktop.doShowModal(worker);
  }
  if (state.StopAction || state.LimitExceeded) return false;
  EstimateDisc = doGetEstimateText();
  job_.doSetEstimated(true);
  return true;
}

bool Estimate::doSuggestDiscType() {
  if (job_.comboDiscType > Cd) {
    if (plan_.TotalSize <= Fixed4() || plan_.TotalSize > CdSuggestionBytes) return false;
    if (isAgreed("According to the estimated backup data size, you can select a lower capacity "
                 "disc type.\nDo you want to change the disc type to 'CD 700MB'?")) {
      doTakeDiscType(Cd);
      EstimateDisc = doGetEstimateText();  // the plan, and with it the count, stays the old one
    }
    return false;
  }
  if (plan_.TotalDiscs <= ManyDiscs || !services_.doCheckDevice(Dvd)) return false;
  if (!isAgreed("According to the estimated backup size, you can select a higher capacity disc "
                "type.\nDo you want to change the disc type to 'DVD 4.7GB' and estimate required "
                "disc again?"))
    return false;
  doTakeDiscType(Dvd);
  return true;
}

bool Estimate::isAgreed(const std::string& question) {
  const FlagScope busy(services_.state.ActionBusy);
  return services_.desktop.doShowMessage({.text = question,
                                          .title = "Change Disc Type",
                                          .icon = MessageIcon::Question,
                                          .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

void Estimate::doTakeDiscType(int index) {
  job_.comboDiscType = index;
  job_.Modified = true;
}

void Estimate::pbEstimateInfo() {
  if (!job_.estimateShown) return;
  const FlagScope busy(services_.state.ActionBusy);
  frmEstimateInfo form(job_, plan_, services_.profile);
  services_.desktop.doShowModal(form);
}

std::string Estimate::doGetEstimateText() const {
  const std::int32_t discs = plan_.TotalSize > Fixed4() ? plan_.TotalDiscs : 0;
  std::string text = job_.discTypeText() + " x " + std::to_string(discs) +
                     "  (Total:  " + formatSizeText(plan_.TotalSize, true) + ", " +
                     Text::counted(plan_.TotalFiles, "file");
  if (plan_.TotalSplits > 0) text += ", " + Text::counted(plan_.TotalSplits, "file") + " split";
  return text + ")";
}

}  // namespace korvenal
