#include "plan/Estimate.h"

#include "core/SizeText.h"
#include "platform/Text.h"

namespace korvenal {

void Estimate::pbEstimate() {
  job_.doSetEstimated(false);
  plan_.clearTotals();
  state_.StopAction = state_.LimitExceeded = false;
  state_.TaskError = 0;
  plan_.ScanMode = 1;
  state_.WorkerMode = WorkerErase;  // for the worker dialog: estimate
  frmAddFiles worker(state_, desktop_, [this](frmAddFiles& form) { scan_.doScanFiles(form); });
  {
    const FlagScope busy(state_.ActionBusy);
    desktop_.doShowModal(worker);
  }
  plan_.ScanMode = 0;
  if (state_.StopAction || state_.LimitExceeded) return;
  EstimateDisc = doGetEstimateText();
  job_.doSetEstimated(true);
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
