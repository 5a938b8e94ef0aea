#include "console/TableText.h"

#include <algorithm>
#include <vector>

#include "platform/Text.h"

namespace korvenal::console {

namespace {

/// Characters of UTF-8 text, as columns of a terminal.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

/// The visible columns. Two neighbours under one header are an icon and its text: the icon has
/// nothing to say here.
std::vector<int> columnsOf(const Table& table) {
  std::vector<int> columns;
  for (int column = 0; column < table.Cols(); ++column) {
    if (table.isColHidden(column)) continue;
    const bool sameHeader = !columns.empty() && !table.text(0, column).empty() &&
                            table.text(0, columns.back()) == table.text(0, column);
    if (sameHeader) columns.pop_back();
    columns.push_back(column);
  }
  return columns;
}

}  // namespace

std::string tableText(const Table& table) {
  std::vector<std::vector<std::string>> rows;
  std::vector<std::size_t> widths;
  const std::vector<int> columns = columnsOf(table);
  for (int row = 0; row < table.Rows(); ++row) {
    if (table.isRowHidden(row)) continue;
    std::vector<std::string> cells;
    for (const int column : columns) {
      const std::string line = Text::replaceAll(table.text(row, column), "\n", " ");
      cells.push_back(Text::escaped(line));
      widths.resize(std::max(widths.size(), cells.size()));
      widths[cells.size() - 1] = std::max(widths[cells.size() - 1], widthOf(cells.back()));
    }
    rows.push_back(std::move(cells));
  }
  std::string text;
  for (const auto& cells : rows) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const std::size_t blanks = widths[i] == 0 ? 0 : widths[i] - widthOf(cells[i]) + 2;
      line += cells[i] + std::string(blanks, ' ');
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

}  // namespace korvenal::console
