#include "core/RunGrids.h"

#include <algorithm>

#include "core/TableHeaders.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int MostRunLogs = 100;
constexpr std::int64_t MaxReportBytes = 1LL << 30;  ///< a report has one line a file of a disc

const std::vector<std::string> EventHeaders = {"Time", "Event"};
const std::vector<std::string> ReportHeaders = {"File Name", "Result", "Source Path"};
const std::vector<std::string> RestoreErrorHeaders = {"Drive", "", "Label ID", "Error", "File"};
// Columns of a disc record. Hidden data stands beside two of them: beside the drive the place of
// the disc in its run, beside the note whether the disc was read again.
constexpr int RecordDrive = 0;
constexpr int RecordLabel = 5;
constexpr int RecordNote = 7;

bool isGoodResult(const Table& report, int row) {
  return Text::toUpper(report.text(row, 1)) == "PASS";
}

}  // namespace

RunGrids::RunGrids(ActionState& state, Desktop& desktop, const Clock& clock, Files& files,
                   const Workspace& workspace)
    : state_(state), desktop_(desktop), clock_(clock), files_(files), workspace_(workspace) {
  for (Table& events : vsEvent) setHeaders(events, EventHeaders);
  for (Table& records : vsOutput) setHeaders(records, DiscRecordHeaders);
  setHeaders(vsError[0], ReportHeaders);
  setHeaders(vsError[1], RestoreErrorHeaders);
}

void RunGrids::doEventMessage(const std::string& msg, bool shade) {
  if (Text::trim(msg).empty()) return;
  const auto page = static_cast<std::size_t>(state_.ActionPage);
  EventStyle style;
  std::string mark;
  switch (msg.front()) {
    case '*':
      style.color = EventStyle::Color::Red;
      mark = "*";
      break;
    case '$':
      style.color = EventStyle::Color::Blue;
      mark = "$";
      break;
    case '?':
      style.background = EventStyle::Background::Orange;
      mark = "?";
      break;
    case '%':
      mark = "%";
      break;
    default:
      break;
  }
  if (shade)
    style.background = EventStyle::Background::Yellow;
  else if (state_.DiscInWork)
    style.background = EventStyle::Background::Green;

  Table& events = vsEvent[page];
  const int row = events.addRow({Dates::timeOfDay(clock_.now()), msg.substr(mark.size())});
  events.setCellData(row, 1, mark);
  events.Row = row;
  styles_[page].resize(static_cast<std::size_t>(events.Rows()));
  styles_[page].back() = style;
  desktop_.doYield();
}

EventStyle RunGrids::styleOf(int page, int row) const {
  const auto& styles = styles_[static_cast<std::size_t>(page)];
  const auto at = static_cast<std::size_t>(row);
  return row > 0 && at < styles.size() ? styles[at] : EventStyle{};
}

void RunGrids::clearPage(int page) {
  const auto at = static_cast<std::size_t>(page);
  vsEvent[at].clearData();
  vsOutput[at].clearData();
  etProgress[at] = {};
  styles_[at].clear();
}

int RunGrids::discOf(int page, int row) const {
  const std::string& place = vsOutput[static_cast<std::size_t>(page)].cellData(row, RecordDrive);
  return place.empty() ? 0 : std::stoi(place);
}

void RunGrids::setDiscOf(int page, int row, int place) {
  vsOutput[static_cast<std::size_t>(page)].setCellData(row, RecordDrive, std::to_string(place));
}

bool RunGrids::isVerified(int row) const {
  return !vsOutput[0].cellData(row, RecordNote).empty();
}

void RunGrids::setVerified(int row) {
  vsOutput[0].setCellData(row, RecordNote, "verified");
}

void RunGrids::doForgetDiscs(int page) {
  Table& records = vsOutput[static_cast<std::size_t>(page)];
  for (int row = 1; row < records.Rows(); ++row) records.setCellData(row, RecordDrive, "");
}

void RunGrids::doSaveDiscReport(int n) {
  constexpr int RowsAtOnce = 8192;  // a few milliseconds
  const WaitPointer wait(desktop_);
  const std::string path = workspace_.runLog(n);
  const auto file = files_.doCreateFile(path);
  if (!file) return;
  const Table& report = vsError[0];
  for (int row = 0; row < report.Rows(); row += RowsAtOnce) {
    file->write(report.saveRows(row, std::min(row + RowsAtOnce, report.Rows())));
    desktop_.doYield();
  }
  // Half a report would be taken for all of it.
  if (!file->finish()) files_.doDeleteFile(path);
}

void RunGrids::doShowDiscReport(int n) {
  PBErrorList[0] = "&Verify Report - " + vsOutput[0].text(n, RecordLabel);
  vsError[0].clearData();
  const std::string path = workspace_.runLog(n);
  if (files_.doFileExists(path)) {
    vsError[0].loadData(files_.readAll(path, MaxReportBytes).value_or(""));
    setHeaders(vsError[0], ReportHeaders);
  }
  doFilterReport();
}

void RunGrids::doFilterReport() {
  const WaitPointer wait(desktop_);
  Table& report = vsError[0];
  for (int row = 1; row < report.Rows(); ++row)
    report.setRowHidden(row, OnlyShowErrorFile && isGoodResult(report, row));
}

void RunGrids::doDeleteRunLogs() {
  for (int n = 1; n <= MostRunLogs; ++n) {
    const std::string path = workspace_.runLog(n);
    if (!files_.doFileExists(path)) return;
    files_.doDeleteFile(path);
  }
}

std::string RunGrids::doGetBurnLogPath(const std::string& prefix) {
  const Dates::Fields today = Dates::fieldsOf(clock_.now());
  const std::string stem = workspace_.TempFolder + prefix + "Log" + std::to_string(today.year) +
                           std::to_string(today.month) + std::to_string(today.day);
  std::string path = stem + ".txt";
  for (int i = 1; i <= 100; ++i) {
    if (files_.doDeleteFile(path)) return path;
    path = stem + std::to_string(i) + ".txt";
  }
  return files_.doFileExists(path) ? workspace_.applicationFolder + "ErrorLog.txt" : path;
}

}  // namespace korvenal
