#include "core/RunGrids.h"

#include <algorithm>

#include "core/TableHeaders.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int MostRunLogs = 100;
constexpr int RowsAtOnce = 8192;                    ///< of a report: a few milliseconds
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
  return Text::equalsIgnoreCase(report.text(row, 1), "PASS");
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
  const int row =
      events.addRow({Dates::timeOfDay(clock_.now()), Text::escaped(msg.substr(mark.size()))});
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

/// Calls the work for the rows of the report, the header too, some thousand at a time.
void RunGrids::doEachPiece(const std::function<void(int from, int to)>& work) {
  const WaitPointer wait(desktop_);
  const FlagScope running(state_.ActionRunning);
  const Table& report = vsError[0];
  for (int row = 0; row < report.Rows(); row += RowsAtOnce) {
    if (row > 0) desktop_.doYield();
    work(row, std::min(row + RowsAtOnce, report.Rows()));
  }
}

void RunGrids::doClearReport(int page) {
  const FlagScope running(state_.ActionRunning);
  Table& report = vsError[static_cast<std::size_t>(page)];
  while (report.Rows() > RowsAtOnce) {
    report.setRows(report.Rows() - RowsAtOnce);
    desktop_.doYield();
  }
  report.clearData();
}

void RunGrids::doSaveDiscReport(int n) {
  // From here on the reports are those of a run of this start, and of no other.
  if (!ownReports_) doDeleteReports();
  ownReports_ = true;
  const std::string path = workspace_.runLog(n);
  const auto file = files_.doCreateFile(path);
  if (!file) return;
  doEachPiece([&](int from, int to) { file->write(vsError[0].saveRows(from, to)); });
  // Half a report would be taken for all of it.
  if (!file->finish()) files_.doDeleteFile(path);
}

void RunGrids::doShowDiscReport(int n) {
  PBErrorList[0] = "&Verify Report - " + vsOutput[0].text(n, RecordLabel);
  doClearReport();
  const std::string path = workspace_.runLog(n);
  if (ownReports_ && files_.doFileExists(path)) doLoadReport(path);
  doFilterReport();
}

/// The lines below the header; none when the file is no report.
void RunGrids::doLoadReport(const std::string& path) {
  constexpr std::int64_t PieceBytes = 1 << 20;
  const WaitPointer wait(desktop_);
  const FlagScope running(state_.ActionRunning);
  Table& report = vsError[0];
  std::string rest;
  bool header = true;
  for (std::int64_t offset = 0;; offset += PieceBytes) {
    const auto piece = files_.readPart(path, offset, PieceBytes);
    if (!piece || offset > MaxReportBytes) return doClearReport();
    rest += *piece;
    const bool last = static_cast<std::int64_t>(piece->size()) < PieceBytes;
    const std::size_t end = last ? rest.size() : rest.rfind('\n') + 1;
    std::string_view lines = std::string_view(rest).substr(0, end);
    if (header && !lines.empty()) {
      lines.remove_prefix(std::min(lines.find('\n'), lines.size() - 1) + 1);
      header = false;
    }
    if (!report.appendData(lines)) return doClearReport();
    if (last) return;
    rest.erase(0, end);
    desktop_.doYield();
  }
}

void RunGrids::doFilterReport() {
  Table& report = vsError[0];
  doEachPiece([&](int from, int to) {
    for (int row = std::max(from, 1); row < to; ++row)
      report.setRowHidden(row, OnlyShowErrorFile && isGoodResult(report, row));
  });
}

void RunGrids::doDeleteRunLogs() {
  if (ownReports_) doDeleteReports();
}

void RunGrids::doDeleteReports() {
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
