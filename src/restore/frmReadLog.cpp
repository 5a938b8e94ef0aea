#include "restore/frmReadLog.h"

#include "restore/IndexNames.h"

namespace korvenal {

namespace {

/// "2026-11-22-10-00" as a date is shown.
std::string dateOfStamp(std::string_view stamp) {
  std::string date(stamp.substr(0, 16));
  if (date.size() == 16) {
    date[10] = ' ';
    date[13] = ':';
  }
  return date;
}

}  // namespace

frmReadLog::frmReadLog(const FoundIndexes& indexes, ReadIndex readIndex)
    : vsIndex({"Drive", "Backup Job", "Backup Time", "Backup Type", ""}),
      readIndex_(std::move(readIndex)) {
  vsIndex.setColHidden(ReadLogName, true);
  for (const FoundIndex& found : indexes) {
    const std::string_view name = found.name;
    const std::size_t jobBytes =
        name.size() > IndexNames::StampBytes ? name.size() - IndexNames::StampBytes : 0;
    const std::string_view stamp = name.substr(jobBytes);
    const bool full = stamp.size() >= 2 && stamp[stamp.size() - 2] == 'F';
    vsIndex.addRow({found.drive, std::string(name.substr(0, jobBytes)),
                    dateOfStamp(stamp.substr(stamp.empty() ? 0 : 1)),
                    full ? "Full" : "Differential", found.name});
    vsIndex.setCellData(vsIndex.Rows() - 1, ReadLogName, found.path);
  }
  vsIndex.Row = vsIndex.hasData() ? 1 : 0;
}

void frmReadLog::pbOK() {
  doOpenRow(vsIndex.Row);
}

void frmReadLog::doOpenRow(int row) {
  if (!buttonsEnabled || row < 1 || row >= vsIndex.Rows()) return;
  buttonsEnabled = false;
  const FoundIndex chosen{vsIndex.text(row, ReadLogDrive), vsIndex.text(row, ReadLogName),
                          vsIndex.cellData(row, ReadLogName)};
  message = "Open backup index in drive (" + chosen.drive + ")...";
  doRepaint();
  readIndex_(chosen);
  doClose();
}

void frmReadLog::doCloseBox() {
  if (buttonsEnabled) doClose();
}

}  // namespace korvenal
