#include "job/NewJob.h"

#include <span>

namespace korvenal {

namespace {

/// "20 MB" of a list index; an index from the settings may lie below the list.
std::string megabytesText(std::span<const int> list, std::int64_t index, std::int64_t fallback) {
  const bool inside = index >= 0 && index < std::ssize(list);
  return std::to_string(list[static_cast<std::size_t>(inside ? index : fallback)]) + " MB";
}

}  // namespace

void NewJob::doNewJob() {
  job_.txJobName = NewJobName;
  doNewJobValues();
}

void NewJob::doNewJobValues() {
  const FlagScope ignore(state_.IgnoreEvents);
  Job fresh;
  fresh.vsContents = std::move(job_.vsContents);  // a front end may be looking at its revision
  fresh.vsContents.clearData();
  fresh.txJobName = job_.txJobName;
  fresh.onBackupPage = job_.onBackupPage;
  fresh.optFileSystem = settings_.FileSystem == 1 ? 1 : 0;
  fresh.optSplitAndSpan = settings_.SplitFile ? 0 : 1;
  fresh.FinalizeDisc = settings_.Finalize;
  fresh.AutoErase = settings_.AutoErase;
  fresh.SkipError = settings_.SkipError;
  fresh.FileSize = megabytesText(SplitFileMegabytes, settings_.SplitSize, 2);
  fresh.DiscSize = megabytesText(SplitDiscMegabytes, settings_.SplitSize2, 5);
  job_ = std::move(fresh);
  doTakeDiscType();

  grids_.clearPage(0);
  grids_.doClearReport();
  grids_.doDeleteRunLogs();
}

void NewJob::doTakeDiscType() {
  // Asked in silence: a drive that writes no DVD is no error of a job that is just begun.
  const FlagScope ignore(state_.IgnoreEvents);
  job_.comboDiscType = drives_.doCheckDevice(1) ? 1 : 0;
}

}  // namespace korvenal
