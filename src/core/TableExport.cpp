#include "core/TableExport.h"

#include <algorithm>
#include <vector>

namespace korvenal {

namespace {

constexpr std::size_t RowsAPiece = 8192;  ///< a few milliseconds

void appendCell(std::string& out, const std::string& text) {
  for (const char c : text) out += c == '\t' || c == '\n' || c == '\r' ? ' ' : c;
}

void appendRow(std::string& out, const Table& table, int row) {
  bool first = true;
  for (int col = 0; col < table.Cols(); ++col) {
    if (table.isColHidden(col)) continue;
    if (!first) out += '\t';
    first = false;
    appendCell(out, table.text(row, col));
  }
  out += '\n';
}

/// As they are now: what is hidden may change while the text is made.
std::vector<int> shownRows(const Table& table) {
  std::vector<int> rows;
  for (int row = 0; row < table.Rows(); ++row)
    if (!table.isRowHidden(row)) rows.push_back(row);
  return rows;
}

void appendLines(std::string& out, const std::string& text) {
  if (text.empty()) return;
  out += text;
  if (text.back() != '\n') out += '\n';
}

}  // namespace

FileOutcome doExportGrid(Desktop& desktop, Files& files, const Table& table,
                         const ExportFrame& frame) {
  if (!table.hasData()) return {};
  FileDialog dialog;
  dialog.title = "Export to Text File";
  dialog.filterName = "Text File(*.txt)";
  dialog.pattern = "*.txt";
  const std::string path = desktop.doAskSaveFile(dialog);
  if (path.empty()) return {};
  const WaitPointer wait(desktop);
  std::vector<std::string> pieces(1);
  appendLines(pieces.back(), frame.header);
  const std::vector<int> rows = shownRows(table);
  for (std::size_t first = 0; first < rows.size(); first += RowsAPiece) {
    std::string& piece = pieces.emplace_back();
    const std::size_t end = std::min(first + RowsAPiece, rows.size());
    for (std::size_t at = first; at < end; ++at) appendRow(piece, table, rows[at]);
    desktop.doYield();
  }
  appendLines(pieces.emplace_back(), frame.footer);
  FileOutcome outcome;
  desktop.doAside([&] {
    std::string text;
    for (const std::string& piece : pieces) text += piece;
    outcome = files.writeAll(path, text);
    pieces.clear();
  });
  return outcome;
}

void doPrintGrid(Desktop& desktop, const Clock& clock, const Table& table,
                 const std::string& title) {
  constexpr std::size_t DateLength = 10;
  if (!table.hasData()) return;
  const std::string today = Dates::display(clock.now()).substr(0, DateLength);
  desktop.doPrintTable(table, title + " - " + today);
}

}  // namespace korvenal
