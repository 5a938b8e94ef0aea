#include "plan/SourceScan.h"

#include "plan/DiscAllocation.h"
#include "plan/FileSplitting.h"
#include "plan/LargeFiles.h"
#include "plan/NameShortening.h"
#include "plan/PlanResults.h"
#include "plan/RunNames.h"

namespace korvenal {

SourceScan::SourceScan(const SourceScanServices& services, const Job& job, Plan& plan)
    : services_(services),
      job_(job),
      plan_(plan),
      index_(services.files, services.archive, services.desktop, services.state) {}

void SourceScan::doScanFiles(frmAddFiles& worker) {
  prepare();
  if (makePlan(worker) != Outcome::Whole) {
    plan_.vsBuffer.clear();
    plan_.TotalDiscs = 0;
  }
  services_.state.TaskDone = true;
}

void SourceScan::doDeleteRunFiles() {
  for (const std::string& path : {plan_.IndexTempPath, plan_.IndexZipPath})
    if (!path.empty()) services_.files.doDeleteFile(path);
}

void SourceScan::prepare() {
  plan_.clearTotals();
  plan_.skippedNotes.clear();
  plan_.IndexOutdated = false;
  plan_.missed = 0;
  plan_.IndexOnDiscs = job_.BurnBackupIndex;
  plan_.IsDifferential = job_.isDifferential();
  splitAndSpan_ = job_.optSplitAndSpan == 1;
  doDeleteRunFiles();
  nameRun(plan_, services_.workspace, job_.txJobName, services_.clock.now());
  plan_.vsBuffer.clear();
}

SourceScan::Outcome SourceScan::makePlan(frmAddFiles& worker) {
  for (const auto step : {&SourceScan::expand, &SourceScan::arrange})
    if (const Outcome outcome = (this->*step)(worker); outcome != Outcome::Whole) return outcome;
  addHeadRows();
  if (const Outcome outcome = allocate(); outcome != Outcome::Whole) return outcome;
  return complete();
}

SourceScan::Outcome SourceScan::expand(frmAddFiles& worker) {
  const auto outcome = Expansion(services_, job_, plan_, worker).run();
  if (outcome == Expansion::Outcome::TooManyRows)
    tellLimit("Backup source has exceeded maximum 1,000,000 items limitation.");
  if (outcome != Expansion::Outcome::Done) return Outcome::Stopped;

  if (plan_.ScanMode == 0)
    for (const std::string& note : plan_.skippedNotes) services_.grids.doEventMessage("*" + note);
  return plan_.vsBuffer.hasData() ? Outcome::Whole : Outcome::Empty;
}

SourceScan::Outcome SourceScan::arrange(frmAddFiles& worker) {
  if (!splitAndSpan_) {
    const auto outcome = LargeFiles(services_, job_, plan_).check(worker);
    if (outcome == LargeFiles::Outcome::Stopped) return Outcome::Stopped;
    splitAndSpan_ = outcome == LargeFiles::Outcome::SplitAll;
  }
  worker.doShowLines("Sorting and caculating...", "");
  if (!NameShortening(services_.state, services_.desktop, plan_).run()) return Outcome::Stopped;
  if (!plan_.vsBuffer.hasData()) return Outcome::Empty;
  const bool whole = cutForJoliet(services_.state, services_.desktop, job_, plan_.vsBuffer);
  return whole ? Outcome::Whole : Outcome::Stopped;
}

PlanTable::Row SourceScan::headRow(const std::string& name, const std::string& source) {
  PlanTable::Row row;
  row.type = RowType::File;
  row.itemFlag = true;
  row.folder = PlanTable::DiscRoot;
  row.name = row.original = plan_.vsBuffer.addText(name);
  row.source = plan_.vsBuffer.addText(source);
  row.dated = true;
  return row;
}

void SourceScan::addHeadRows() {
  auto& rows = plan_.vsBuffer.rows();
  PlanTable::Row index = headRow(plan_.IndexDiscName, plan_.IndexTempPath);
  index.modified = plan_.RunDate;
  rows.insert(rows.begin() + 1, index);
  // A first index, still without discs, tells the size to count with when disc 1 is filled.
  plan_.IndexSizePreliminary = index_.doWriteBackupIndex(plan_, nullptr);
  rows[1].size = plan_.IndexSizePreliminary;

  const std::string kitPath = services_.workspace.binFolder + KitFileName;
  const FileInfo kitInfo = services_.files.doGetInfo(kitPath);
  if (!job_.BurnRestoreKit || kitInfo.kind != FileInfo::Kind::File) return;
  PlanTable::Row kit = headRow(KitFileName, kitPath);
  kit.size = kitInfo.size;
  kit.modified = kitInfo.modified;
  rows.insert(rows.begin() + 2, kit);
}

SourceScan::Outcome SourceScan::allocate() {
  const AllocationRules rules =
      allocationRules(services_.settings, job_.comboDiscType, splitAndSpan_);
  DiscAllocation allocation(services_.state, services_.desktop, plan_, rules);
  const auto outcome = allocation.run();
  if (outcome == DiscAllocation::Outcome::TooManyDiscs) {
    services_.state.StopAction = services_.state.LimitExceeded = true;
    tellLimit("Backup required disc has exceeded maximum 100 discs limitation.");
  }
  return outcome == DiscAllocation::Outcome::Done ? Outcome::Whole : Outcome::Stopped;
}

SourceScan::Outcome SourceScan::complete() {
  PlanTable& table = plan_.vsBuffer;
  countPlan(plan_);
  if (plan_.IsDifferential || services_.settings.ExcludeEmptyFolder) doRemoveEmptyFolders(table);

  // A restore cannot join pieces without the index.
  plan_.IndexOnDiscs = job_.BurnBackupIndex || plan_.TotalSplits > 0;
  if (!plan_.IndexOnDiscs) {
    table.rows().erase(table.rows().begin() + 1);
    return Outcome::Whole;
  }
  if (plan_.ScanMode != 0) return Outcome::Whole;

  const BackupIndex::Header header{job_.txJobName, ""};
  plan_.IndexSizeFinal = index_.doWriteBackupIndex(plan_, &header);
  if (services_.state.StopAction) return Outcome::Stopped;
  table.row(1).size = plan_.IndexSizeFinal;
  if (plan_.IndexSizeFinal == Fixed4())
    services_.grids.doEventMessage("*The backup index could not be written.");
  return Outcome::Whole;
}

void SourceScan::tellLimit(const std::string& text) {
  if (plan_.ScanMode == 0) services_.grids.doEventMessage("*" + text);
  services_.desktop.doShowMessage({.text = text,
                                   .title = plan_.ScanMode == 1 ? "Stop Estimation" : "Stop Action",
                                   .icon = MessageIcon::Warning});
}

}  // namespace korvenal
