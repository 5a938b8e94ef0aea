#include "platform/Table.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace korvenal {

namespace {

/// Wider rows than any table here are no such form; the limit bounds what a crafted file costs.
constexpr int MaxLoadedCols = 256;

const std::string& emptyText() {
  static const std::string empty;
  return empty;
}

void appendEscaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        out += c;
    }
  }
}

std::optional<std::string> unescaped(std::string_view field) {
  std::string text;
  text.reserve(field.size());
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] == '\r') return std::nullopt;
    if (field[i] != '\\') {
      text += field[i];
      continue;
    }
    if (++i == field.size()) return std::nullopt;
    switch (field[i]) {
      case 't':
        text += '\t';
        break;
      case 'n':
        text += '\n';
        break;
      case 'r':
        text += '\r';
        break;
      case '\\':
        text += '\\';
        break;
      default:
        return std::nullopt;
    }
  }
  return text;
}

/// The text up to the separator, which is taken away with it; all of it when there is none.
std::string_view takeField(std::string_view& rest, char separator, bool& last) {
  const std::size_t end = rest.find(separator);
  last = end == std::string_view::npos;
  const std::string_view field = rest.substr(0, end);
  rest.remove_prefix(last ? rest.size() : end + 1);
  return field;
}

/// The next line without its end, which other programs write as a carriage return and a line feed.
std::string_view takeLine(std::string_view& rest, bool& last) {
  std::string_view line = takeField(rest, '\n', last);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

Table::Table(std::vector<std::string> headers) {
  setCols(static_cast<int>(headers.size()));
  for (int col = 0; col < cols_; ++col)
    cellFor(0, col).text = std::move(headers[static_cast<std::size_t>(col)]);
}

void Table::doTellChange() {
  ++revision_;
  ++settledRevision_;
}

void Table::setRows(int rows) {
  rows_.resize(static_cast<std::size_t>(std::max(rows, 1)));
  keepRowInside();
  doTellChange();
}

void Table::setCols(int cols) {
  cols_ = std::max(cols, 0);
  for (RowData& row : rows_)
    if (row.cells.size() > static_cast<std::size_t>(cols_))
      row.cells.resize(static_cast<std::size_t>(cols_));
  hiddenCols_.resize(static_cast<std::size_t>(cols_));
  doTellChange();
}

const Table::Cell* Table::cellAt(int row, int col) const {
  if (row < 0 || row >= Rows() || col < 0) return nullptr;
  const auto& cells = rows_[static_cast<std::size_t>(row)].cells;
  return static_cast<std::size_t>(col) < cells.size() ? &cells[static_cast<std::size_t>(col)]
                                                      : nullptr;
}

Table::Cell& Table::cellFor(int row, int col) {
  row = std::max(row, 0);
  col = std::max(col, 0);
  if (row >= Rows()) setRows(row + 1);
  if (col >= cols_) setCols(col + 1);
  auto& cells = rows_[static_cast<std::size_t>(row)].cells;
  if (cells.size() <= static_cast<std::size_t>(col)) cells.resize(static_cast<std::size_t>(cols_));
  doTellChange();
  return cells[static_cast<std::size_t>(col)];
}

const std::string& Table::text(int row, int col) const {
  const Cell* cell = cellAt(row, col);
  return cell != nullptr ? cell->text : emptyText();
}

void Table::setText(int row, int col, std::string text) {
  cellFor(row, col).text = std::move(text);
}

Table::Check Table::check(int row, int col) const {
  const Cell* cell = cellAt(row, col);
  return cell != nullptr ? cell->check : Check::None;
}

void Table::setCheck(int row, int col, Check check) {
  cellFor(row, col).check = check;
}

const std::string& Table::cellData(int row, int col) const {
  const Cell* cell = cellAt(row, col);
  return cell != nullptr ? cell->data : emptyText();
}

void Table::setCellData(int row, int col, std::string data) {
  cellFor(row, col).data = std::move(data);
}

bool Table::isRowHidden(int row) const {
  return row >= 0 && row < Rows() && rows_[static_cast<std::size_t>(row)].hidden;
}

void Table::setRowHidden(int row, bool hidden) {
  if (row < 0 || row >= Rows() || isRowHidden(row) == hidden) return;
  rows_[static_cast<std::size_t>(row)].hidden = hidden;
  doTellChange();
}

bool Table::isColHidden(int col) const {
  return col >= 0 && col < cols_ && hiddenCols_[static_cast<std::size_t>(col)];
}

void Table::setColHidden(int col, bool hidden) {
  if (col < 0) return;
  if (col >= cols_) setCols(col + 1);
  hiddenCols_[static_cast<std::size_t>(col)] = hidden;
  doTellChange();
}

int Table::addRow(std::vector<std::string> texts, bool hidden) {
  rows_.push_back(rowOf(std::move(texts)));
  rows_.back().hidden = hidden;
  ++revision_;
  return Rows() - 1;
}

void Table::insertRow(int at, std::vector<std::string> texts) {
  at = std::clamp(at, 1, Rows());
  rows_.insert(rows_.begin() + at, rowOf(std::move(texts)));
  doTellChange();
}

Table::RowData Table::rowOf(std::vector<std::string> texts) {
  if (static_cast<int>(texts.size()) > cols_) setCols(static_cast<int>(texts.size()));
  RowData row;
  row.cells.resize(texts.size());
  for (std::size_t col = 0; col < texts.size(); ++col) row.cells[col].text = std::move(texts[col]);
  return row;
}

void Table::removeRow(int at) {
  if (at < 1 || at >= Rows()) return;
  rows_.erase(rows_.begin() + at);
  keepRowInside();
  doTellChange();
}

void Table::moveRow(int from, int to) {
  if (from < 1 || from >= Rows()) return;
  to = std::clamp(to, 1, Rows() - 1);
  const auto begin = rows_.begin();
  if (from < to)
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  else
    std::rotate(begin + to, begin + from, begin + from + 1);
  doTellChange();
}

void Table::arrangeRows(const std::vector<int>& rows) {
  std::deque<RowData> arranged;
  arranged.push_back(std::move(rows_.front()));
  for (const int row : rows)
    if (row >= 1 && row < Rows())
      arranged.push_back(std::move(rows_[static_cast<std::size_t>(row)]));
  rows_ = std::move(arranged);
  keepRowInside();
  doTellChange();
}

void Table::keepRowInside() {
  Row = std::min(Row, Rows() - 1);
}

std::string Table::saveData(bool withChecks) const {
  return saveRows(0, Rows(), withChecks);
}

std::string Table::saveRows(int from, int to, bool withChecks) const {
  std::string out;
  for (int row = from; row < to; ++row) {
    for (int col = 0; col < cols_; ++col) {
      if (col > 0) out += '\t';
      appendEscaped(out, text(row, col));
    }
    if (withChecks) {
      out += '\t';
      for (int col = 0; col < cols_; ++col)
        out += static_cast<char>('0' + static_cast<int>(check(row, col)));
    }
    out += '\n';
  }
  return out;
}

bool Table::loadData(std::string_view data, bool withChecks, int maxRows) {
  rows_.clear();
  data = Text::withoutByteOrderMark(data);
  const bool wellFormed =
      !data.empty() && parseRows(data, withChecks, static_cast<std::size_t>(maxRows), rows_);
  if (!wellFormed) rows_.assign(1, {});
  doWiden(0);
  keepRowInside();
  return wellFormed;
}

int Table::loadSoundRows(std::string_view data, int cols, int maxRows) {
  rows_.assign(1, {});
  data = Text::withoutByteOrderMark(data);
  bool last = false;
  takeLine(data, last);
  int damaged = 0;
  while (!data.empty()) {
    RowData row;
    if (!parseRow(takeLine(data, last), false, row) || std::ssize(row.cells) != cols ||
        Rows() >= maxRows)
      ++damaged;
    else
      rows_.push_back(std::move(row));
  }
  setCols(cols);
  keepRowInside();
  return damaged;
}

bool Table::appendData(std::string_view data, bool withChecks, int maxRows) {
  const std::size_t before = rows_.size();
  const bool wellFormed = parseRows(data, withChecks, static_cast<std::size_t>(maxRows), rows_);
  if (!wellFormed) rows_.resize(before);
  doWiden(before);
  ++revision_;
  return wellFormed;
}

/// Makes room for the rows from `first` on.
void Table::doWiden(std::size_t first) {
  std::size_t widest = static_cast<std::size_t>(cols_);
  for (std::size_t row = first; row < rows_.size(); ++row)
    widest = std::max(widest, rows_[row].cells.size());
  if (first == 0 || widest > static_cast<std::size_t>(cols_)) setCols(static_cast<int>(widest));
}

bool Table::parseRows(std::string_view data, bool withChecks, std::size_t maxRows,
                      std::deque<RowData>& rows) {
  while (!data.empty()) {
    bool lastLine = false;
    RowData row;
    if (rows.size() >= maxRows || !parseRow(takeLine(data, lastLine), withChecks, row))
      return false;
    rows.push_back(std::move(row));
  }
  return true;
}

bool Table::parseRow(std::string_view line, bool withChecks, RowData& row) {
  std::string_view checks;
  if (withChecks) {
    const std::size_t tab = line.rfind('\t');
    if (tab == std::string_view::npos) return false;
    checks = line.substr(tab + 1);
    line = line.substr(0, tab);
  }
  for (bool last = false; !last;) {
    auto text = unescaped(takeField(line, '\t', last));
    if (!text || row.cells.size() == MaxLoadedCols) return false;
    row.cells.push_back({std::move(*text), {}, Check::None});
  }
  if (!withChecks) return true;
  if (checks.size() != row.cells.size()) return false;
  for (std::size_t col = 0; col < checks.size(); ++col) {
    if (checks[col] < '0' || checks[col] > '2') return false;
    row.cells[col].check = static_cast<Check>(checks[col] - '0');
  }
  return true;
}

}  // namespace korvenal
