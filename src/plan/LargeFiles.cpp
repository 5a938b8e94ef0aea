#include "plan/LargeFiles.h"

#include "core/SizeText.h"
#include "plan/PlanLimits.h"
#include "plan/frmSplit.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

LargeFiles::Outcome LargeFiles::check(frmAddFiles& worker) {
  worker.doShowLines("Checking large files...", "");
  PlanTable& table = plan_.vsBuffer;
  Outcome outcome = Outcome::Done;
  for (int row = 1; row < table.Rows() && outcome == Outcome::Done; ++row) {
    if (table.row(row).type != RowType::File) continue;
    const std::string reason = reasonToSplit(row);
    if (reason.empty()) continue;
    const int choice = ask(row, reason);
    services_.desktop.doYield();
    if (choice == frmSplit::SkipIt) {
      plan_.TotalSize -= table.row(row).size;
      table.row(row).type = RowType::None;
    } else if (choice == frmSplit::SplitAll) {
      outcome = Outcome::SplitAll;
    }
    if (choice == frmSplit::Stop) services_.state.StopAction = true;
    if (services_.state.StopAction) outcome = Outcome::Stopped;
  }
  table.dropEmptyRows();
  return outcome;
}

std::string LargeFiles::reasonToSplit(int row) const {
  const std::int64_t size = plan_.vsBuffer.row(row).size.whole();
  const bool overDisc = size + EntryOverhead > discCapacity(job_.comboDiscType);
  if (!overDisc && size <= LargeFileLimit) return {};
  return "The file '" + Text::escaped(plan_.vsBuffer.sourcePath(row)) + "' is larger than " +
         (overDisc ? job_.discTypeText() + " disc capacity," : "2GB,") +
         " it need to be split for burning to disc.";
}

int LargeFiles::ask(int row, const std::string& reason) {
  frmSplit form;
  form.message = reason;
  form.sizeText = formatSizeText(plan_.vsBuffer.row(row).size, true);
  form.dateText = "Modified date:  " + Dates::displayShort(plan_.vsBuffer.row(row).modified);
  form.fileName = Paths::doGetFilePart(plan_.vsBuffer.sourcePath(row));
  // The worker dialog below this one may hold the flag already.
  const bool wasBusy = services_.state.ActionBusy;
  services_.state.ActionBusy = true;
  services_.desktop.doShowModal(form);
  services_.state.ActionBusy = wasBusy;
  return form.choice;
}

}  // namespace korvenal
