#include "burn/IndexOnDisc.h"

namespace korvenal {

IndexOnDisc::IndexOnDisc(BurnServices& services)
    : services_(services),
      index_(services.files, services.archive, services.desktop, services.state) {}

bool IndexOnDisc::isUpToDate() const {
  const Plan& plan = services_.plan;
  return !plan.IndexOutdated && plan.IndexSizeFinal > Fixed4() &&
         services_.files.doGetFileSize(plan.IndexTempPath) == plan.IndexSizeFinal;
}

bool IndexOnDisc::doBringUpToDate() {
  if (isUpToDate()) return true;
  Plan& plan = services_.plan;
  services_.grids.doEventMessage("Writing the backup index anew...");
  const BackupIndex::Header header{services_.job.txJobName, ""};
  plan.IndexSizeFinal = index_.doWriteBackupIndex(plan, &header);
  plan.vsBuffer.row(1).size = plan.IndexSizeFinal;
  plan.IndexOutdated = false;
  if (isUpToDate()) return true;
  if (!services_.state.StopAction)
    services_.grids.doEventMessage("*The backup index could not be written.");
  return false;
}

bool IndexOnDisc::isAgreedToGoWithout() {
  if (withoutIndex_) return true;
  const FlagScope modal(services_.state.IgnoreEvents);
  const Answer answer = services_.desktop.doShowMessage(
      {.text = "The backup index could not be written. Do you want to burn the discs without it?",
       .title = "Burn Backup",
       .icon = MessageIcon::Warning,
       .buttons = MessageButtons::YesNo,
       .noPreselected = true,
       .yesInPersonOnly = true});
  withoutIndex_ = answer == Answer::Yes;
  return withoutIndex_;
}

bool IndexOnDisc::doEnsure() {
  if (!isWanted() || doBringUpToDate()) return true;
  return !services_.state.StopAction && isAgreedToGoWithout();
}

bool IndexOnDisc::doInsert(int disc, std::size_t filesInLayout) {
  place_.reset();
  copies_ = 0;
  return doPut(disc, filesInLayout);
}

bool IndexOnDisc::doReplace(int disc, std::size_t filesInLayout) {
  if (!place_) return true;
  services_.engine.do_LeaveOutSource(*place_);
  place_.reset();
  return doPut(disc, filesInLayout);
}

bool IndexOnDisc::doPut(int disc, std::size_t filesInLayout) {
  if (!isWanted()) return true;
  if (!doBringUpToDate())
    return !services_.state.StopAction && (disc != 1 || isAgreedToGoWithout());
  const Plan& plan = services_.plan;
  // Its date on the disc is that of its making, not that of its row.
  services_.engine.do_SetPlannedSource({.size = plan.IndexSizeFinal.whole(), .modified = {}});
  services_.engine.do_InsertFileWithName("\\", plan.IndexTempPath, plan.IndexDiscName, "", 0, 0, 0,
                                         0);
  place_ = static_cast<std::int32_t>(filesInLayout + copies_++);
  return true;
}

bool IndexOnDisc::doTakeBack(int disc) {
  if (!place_ || disc == 1) return false;
  services_.engine.do_LeaveOutSource(*place_);
  place_.reset();
  return true;
}

}  // namespace korvenal
