#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvenal {

/// A grid of texts: the data store of the small tables of the program. Row 0 is the header; a
/// table without data has one row. Reading a cell outside gives an empty text; writing one
/// widens the table.
class Table {
 public:
  /// The check state of a cell.
  enum class Check : std::uint8_t { None = 0, Ticked = 1, Unticked = 2 };

  static constexpr int MaxLoadedRows = 2'000'000;

  Table() = default;
  /// An empty table with these header texts.
  explicit Table(std::vector<std::string> headers);

  int Rows() const { return static_cast<int>(rows_.size()); }
  int Cols() const { return cols_; }
  bool hasData() const { return Rows() > 1; }
  /// Cuts the table at the bottom or adds empty rows.
  void setRows(int rows);
  void setCols(int cols);
  /// Cuts the table to its header row.
  void clearData() { setRows(1); }

  const std::string& text(int row, int col) const;
  void setText(int row, int col, std::string text);
  Check check(int row, int col) const;
  void setCheck(int row, int col, Check check);
  /// A hidden value beside the text; data-only files do not hold it.
  const std::string& cellData(int row, int col) const;
  void setCellData(int row, int col, std::string data);
  bool isRowHidden(int row) const;
  void setRowHidden(int row, bool hidden);
  bool isColHidden(int col) const;
  void setColHidden(int col, bool hidden);

  /// Adds a row at the end and returns its number.
  int addRow(std::vector<std::string> texts = {}, bool hidden = false);
  /// The new row gets the number `at`, at least 1: the header stays where it is.
  void insertRow(int at, std::vector<std::string> texts = {});
  /// Nothing happens for the header and for rows outside.
  void removeRow(int at);
  /// Row `from` gets the number `to`; those between close up.
  void moveRow(int from, int to);
  /// Brings the data rows into the order in which `rows` names them, each once; rows that it does
  /// not name go. Linear, unlike many moves.
  void arrangeRows(const std::vector<int>& rows);

  /// The row that the person is on; 0 for none. It moves up when the table ends above it.
  int Row = 0;
  /// Grows with every change; a front end compares it to know whether to repaint.
  std::uint64_t revision() const { return revision_; }
  /// Grows with every change of what was there before: rows added at the end leave it as it is.
  std::uint64_t settledRevision() const { return settledRevision_; }

  /// The data-only file form: UTF-8, one line a row, cells separated by a tab; backslash escapes
  /// for tab (\t), line feed (\n), carriage return (\r) and backslash (\\). With check states one
  /// more field a row holds one digit a column.
  std::string saveData(bool withChecks = false) const;
  /// The part of that which rows `from` to before `to` make.
  std::string saveRows(int from, int to, bool withChecks = false) const;
  /// Replaces all rows, the header too; the table widens to the longest. A byte order mark and line
  /// ends with a carriage return, as editors leave them, are taken as well. False, leaving a table
  /// of one row without texts, when the data is no such form or holds more than `maxRows` rows.
  bool loadData(std::string_view data, bool withChecks = false, int maxRows = MaxLoadedRows);
  /// Replaces the data rows by the rows of `cols` columns in such data without check states,
  /// leaving out every line that is no such row, and what comes behind `maxRows` rows. The first
  /// line is the header, which stays without texts. The number of lines left out.
  int loadSoundRows(std::string_view data, int cols, int maxRows);
  /// Adds the rows of such data, which begins and ends between two lines, at the end. False, adding
  /// none, when it is no such form or the table would hold more than `maxRows` rows.
  bool appendData(std::string_view data, bool withChecks = false, int maxRows = MaxLoadedRows);

 private:
  struct Cell {
    std::string text;
    std::string data;
    Check check = Check::None;
  };
  struct RowData {
    std::vector<Cell> cells;
    bool hidden = false;
  };

  static bool parseRow(std::string_view line, bool withChecks, RowData& row);
  static bool parseRows(std::string_view data, bool withChecks, std::size_t maxRows,
                        std::deque<RowData>& rows);
  RowData rowOf(std::vector<std::string> texts);
  void doWiden(std::size_t first);
  void doTellChange();
  const Cell* cellAt(int row, int col) const;
  Cell& cellFor(int row, int col);
  void keepRowInside();

  // Never moved when the table grows: with a million rows that takes its time.
  std::deque<RowData> rows_ = std::deque<RowData>(1);
  std::vector<bool> hiddenCols_;
  int cols_ = 0;
  std::uint64_t revision_ = 0;
  std::uint64_t settledRevision_ = 0;
};

}  // namespace korvenal
