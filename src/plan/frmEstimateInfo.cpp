#include "plan/frmEstimateInfo.h"

#include "core/SizeText.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr const char* Section = "Backup";
constexpr const char* ShowInfoKey = "EstimateInfo";
constexpr const char* ShowPathKey = "EstimateShowPath";
constexpr std::size_t LabelBytes = 16;

}  // namespace

frmEstimateInfo::frmEstimateInfo(const Job& job, const Plan& plan, Profile& profile)
    : caption("Estimate Details - " + job.txJobName),
      discType(job.discTypeText()),
      discs(std::to_string(plan.TotalSize > Fixed4() ? plan.TotalDiscs : 0)),
      files(std::to_string(plan.TotalFiles)),
      splitFiles(std::to_string(plan.TotalSplits)),
      totalSize(formatSizeText(plan.TotalSize, true)),
      leftOut(plan.skippedNotes),
      vsDisc({"Disc No.", "Label", "Used", "Filled"}),
      vsDContents(job, plan),
      chkShowInfo(isWanted(profile)),
      job_(job),
      plan_(plan),
      profile_(profile),
      showPath_(profile.doReadProfile(Section, ShowPathKey, "0") == "1") {
  fillDiscs();
  doSelectDisc(1);
}

bool frmEstimateInfo::isWanted(const Profile& profile) {
  return profile.doReadProfile(Section, ShowInfoKey, "1") == "1";
}

void frmEstimateInfo::fillDiscs() {
  for (int disc = 1; disc <= plan_.TotalDiscs; ++disc) {
    const std::string percent = std::to_string(fillPercent(disc));
    const int row = vsDisc.addRow({std::to_string(disc), labelOf(disc),
                                   formatSizeText(plan_.doGetDiscSZ(disc), true), percent + "%"});
    vsDisc.setCellData(row, EstimateFilled, percent);
  }
}

std::string frmEstimateInfo::labelOf(int disc) const {
  if (job_.BurnBackupIndex || plan_.TotalSplits > 0) return "Backup #" + std::to_string(disc);
  return Text::doMidBytes(job_.txJobName, 1, LabelBytes);
}

int frmEstimateInfo::fillPercent(int disc) const {
  return static_cast<int>(plan_.doGetDiscSZ(disc).whole() * 100 / discCapacity(job_.comboDiscType));
}

void frmEstimateInfo::doSelectDisc(int disc) {
  if (disc < 1 || disc >= vsDisc.Rows()) return;
  vsDisc.Row = disc;
  vsDContents.doShowDisc(disc);
  doRepaint();
}

void frmEstimateInfo::setShowPath(bool on) {
  showPath_ = on;
  doRepaint();
}

void frmEstimateInfo::doCloseBox() {
  profile_.doWriteProfile(Section, ShowInfoKey, chkShowInfo ? "1" : "0");
  profile_.doWriteProfile(Section, ShowPathKey, showPath_ ? "1" : "0");
  doClose();
}

}  // namespace korvenal
