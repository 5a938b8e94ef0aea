#include "records/Records.h"

#include "core/TableHeaders.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int MaxLogRows = 201;       ///< with the header
constexpr int RecentRowsCutAt = 101;  ///< more rows than these, header included, are cut ...
constexpr int RecentRowsKept = 100;   ///< ... to so many
constexpr int RecentJobFile = 7;

const std::vector<std::string> RecentHeaders = {"Last Run Time", "Backup Job", "Files", "Size",
                                                "Disc Type",     "Disc",       "Note",  ""};

bool isConfirmed(Desktop& desktop, const std::string& question) {
  return desktop.doShowMessage({.text = question,
                                .title = "Confirm",
                                .icon = MessageIcon::Question,
                                .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

}  // namespace

Records::Records(Files& files, Desktop& desktop, RunGrids& grids, const Workspace& workspace)
    : files_(files),
      desktop_(desktop),
      grids_(grids),
      discLog_(files, workspace.gDiscLogFile, static_cast<int>(DiscRecordHeaders.size())),
      recent_(files, workspace.gRecentFile, static_cast<int>(RecentHeaders.size())) {
  setHeaders(vsLog, DiscRecordHeaders);
  setHeaders(vsRecent, RecentHeaders);
  vsRecent.setColHidden(RecentJobFile, true);
}

void Records::doReadDiscLog() {
  doTell(discLog_, discLog_.doLoad(vsLog));
  setHeaders(vsLog, DiscRecordHeaders);
}

void Records::doReadRecent() {
  doTell(recent_, recent_.doLoad(vsRecent));
  setHeaders(vsRecent, RecentHeaders);
  vsRecent.setColHidden(RecentJobFile, true);
}

void Records::doSaveDiscLog() {
  doTell(discLog_, discLog_.doSave(vsLog));
}

void Records::doSaveRecentBackup() {
  const WaitPointer wait(desktop_);
  doTell(recent_, recent_.doSave(vsRecent));
}

void Records::doTell(const HistoryFile& history, const std::string& fault) const {
  if (!fault.empty() && onFault) onFault(history.path(), fault);
}

void Records::doAddDiscLogRow(int runIndex, int row) {
  const WaitPointer wait(desktop_);
  const Table& run = grids_.vsOutput[static_cast<std::size_t>(runIndex)];
  std::vector<std::string> columns;
  columns.reserve(DiscRecordHeaders.size());
  for (int col = 0; col < static_cast<int>(DiscRecordHeaders.size()); ++col)
    columns.emplace_back(Text::trim(run.text(row, col)));
  vsLog.insertRow(1, std::move(columns));
  if (vsLog.Rows() > MaxLogRows) vsLog.setRows(MaxLogRows);
  doSaveDiscLog();
  vsLog.Row = 1;
}

void Records::doAddRecent(std::vector<std::string> columns) {
  vsRecent.insertRow(1, std::move(columns));
  if (vsRecent.Rows() > RecentRowsCutAt) vsRecent.setRows(RecentRowsKept);
  doSaveRecentBackup();
}

void Records::doDeleteLogRow() {
  if (vsLog.Row < 1 || vsLog.Row >= vsLog.Rows()) return;
  vsLog.removeRow(vsLog.Row);
  doSaveDiscLog();
}

void Records::doClearLog() {
  if (!isConfirmed(desktop_, "Are you sure you want to clear all disc record?")) return;
  const WaitPointer wait(desktop_);
  vsLog.clearData();
  setHeaders(vsLog, DiscRecordHeaders);
  doSaveDiscLog();
}

void Records::doDeleteRecentRow() {
  if (vsRecent.Row < 1 || vsRecent.Row >= vsRecent.Rows()) return;
  vsRecent.removeRow(vsRecent.Row);
  doSaveRecentBackup();
}

void Records::doClearRecent() {
  if (!isConfirmed(desktop_, "Are you sure you want to clear all backup record?")) return;
  vsRecent.clearData();
  doSaveRecentBackup();
}

std::string Records::recentJobFile(int row) const {
  if (row < 1 || row >= vsRecent.Rows()) return {};
  const std::string& path = vsRecent.text(row, RecentJobFile);
  return !path.empty() && files_.doIsFile(path) ? path : std::string();
}

}  // namespace korvenal
