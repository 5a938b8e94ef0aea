#include "console/RecordCommandGroup.h"

#include "console/TableText.h"
#include "core/GridTitles.h"
#include "core/TableExport.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

constexpr const char* TableNames =
    "vsLog, vsRecent, vsContents, vsEvent(n), vsOutput(n), vsError(n)";

/// A name with or without a page: "vsEvent(1)".
struct PagedName {
  std::string name;
  int page = -1;
};

PagedName pagedName(const std::string& text) {
  const std::size_t open = text.find('(');
  if (open == std::string::npos || text.back() != ')') return {text, -1};
  const auto page = parseNumber(text.substr(open + 1, text.size() - open - 2), 0, 2);
  return {page ? text.substr(0, open) : std::string(), page.value_or(-1)};
}

}  // namespace

Commands RecordCommandGroup::commands() {
  using A = const Arguments&;
  frmMain& main = session_.main;
  return {
      {"records", "", "shows the discs written and read so far", 0, 0,
       [this, &main](A) { return doShowTable(main.records.vsLog, "No disc record."); }},
      {"recent", "", "shows the backups run so far", 0, 0,
       [this, &main](A) { return doShowTable(main.records.vsRecent, "No backup record."); }},
      {"errors", "", "shows the errors of the last restore", 0, 0,
       [this, &main](A) { return doShowTable(main.grids.vsError[1], "No errors."); }},
      {"report", "N", "shows the verify report of the n-th disc of the last backup", 1, 1,
       [this](A a) { return doReport(a); }},
      {"export", "TABLE FILE", std::string("writes a table as text: ") + TableNames, 2, 2,
       [this](A a) { return doExport(a); }},
      {"print", "TABLE", "prints a table", 1, 1, [this](A a) { return doPrint(a); }},
  };
}

ExitCode RecordCommandGroup::doShowTable(const Table& table, const std::string& whenEmpty) {
  if (table.hasData())
    session_.screen.raw(tableText(table));
  else
    session_.screen.line(whenEmpty);
  return ExitCode::Ok;
}

ExitCode RecordCommandGroup::doReport(const Arguments& arguments) {
  RunGrids& grids = session_.main.grids;
  const auto disc = parseNumber(arguments[0], 1, grids.vsOutput[0].Rows() - 1);
  if (!disc) return session_.fail("There is no disc record " + arguments[0] + ".");
  grids.doShowDiscReport(*disc);
  session_.screen.line(Text::replaceAll(grids.PBErrorList[0], "&", ""));
  return doShowTable(grids.vsError[0], "There is no report.");
}

RecordCommandGroup::NamedTable RecordCommandGroup::tableNamed(const std::string& name) const {
  const frmMain& main = session_.main;
  const PagedName wanted = pagedName(name);
  if (wanted.page < 0) {
    if (wanted.name == "vsLog") return {&main.records.vsLog, DiscRecordTitle};
    if (wanted.name == "vsRecent") return {&main.records.vsRecent, RecentBackupTitle};
    if (wanted.name == "vsContents") return {&main.job.vsContents, main.job.txJobName};
  }
  const auto page = static_cast<std::size_t>(wanted.page < 0 ? main.state.ActionPage : wanted.page);
  if (wanted.name == "vsEvent") return {&main.grids.vsEvent[page], EventTitles[page]};
  if (wanted.name == "vsOutput") return {&main.grids.vsOutput[page], OutputTitles[page]};
  if (wanted.name == "vsError" && page < main.grids.vsError.size())
    return {&main.grids.vsError[page], ErrorTitles[page]};
  return {};
}

RecordCommandGroup::NamedTable RecordCommandGroup::findTable(const std::string& name) const {
  NamedTable found = tableNamed(name);
  if (found.table == nullptr) {
    session_.screen.line(std::string("The tables are ") + TableNames + ".");
  } else if (!found.table->hasData()) {
    session_.screen.line(name + " is empty.");
    return {};
  }
  return found;
}

ExitCode RecordCommandGroup::doExport(const Arguments& arguments) {
  const NamedTable found = findTable(arguments[0]);
  if (found.table == nullptr) return ExitCode::Failed;
  const std::string path = absolutePath(arguments[1]);
  session_.desktop.prepareFile(path);
  const FileOutcome outcome = doExportGrid(session_.desktop, session_.files, *found.table);
  return outcome ? ExitCode::Ok : session_.fail(path + ": " + outcome.text);
}

ExitCode RecordCommandGroup::doPrint(const Arguments& arguments) {
  const NamedTable found = findTable(arguments[0]);
  if (found.table == nullptr) return ExitCode::Failed;
  doPrintGrid(session_.desktop, session_.clock, *found.table, found.title);
  return ExitCode::Failed;  // a terminal has no printer, and has said so
}

}  // namespace korvenal::console
