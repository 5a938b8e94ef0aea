#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "plan/BackupIndex.h"
#include "plan/PlanLimits.h"

namespace korvenal {

/// Fields of a line of the index. The header line uses the same places for its own values.
enum IndexField : int {
  IndexFlag = 0,
  IndexName = 1,
  IndexOrigin = 2,
  IndexSize = 3,
  IndexType = 4,
  IndexDate = 5,
  IndexSplit = 6,
  IndexStart = 7,
  IndexEnd = 8,
  IndexDisc = 9,

  IndexHeadStamp = 0,
  IndexHeadJob = 1,
  IndexHeadFiles = 2,
  IndexHeadSize = 3,
  IndexHeadDate = 5,
  IndexHeadSplits = 6,
  IndexHeadDiscs = 9,
};

/// One line of an index: views into its text.
using IndexLine = std::array<std::string_view, IndexFields>;

/// The text of a backup index: one line a row, ended by a line feed with or without a carriage
/// return before it, fields separated by tabs, no quoting. Nothing but these characters separates.
class IndexText {
 public:
  static constexpr int MaxLines = MaxIndexLines;
  /// What an index begins with, whatever version wrote it.
  static constexpr std::string_view Stamp = "KORVEN";

  /// Takes a text as an index. False, leaving no rows, unless there is a header line with the
  /// program's stamp, at least one line behind it and exactly ten fields a line. A last line with
  /// an empty first field does not count. `yield` runs every now and then.
  bool load(std::string text, const std::function<void()>& yield = {});
  void clear();

  /// Lines, the header line included; 0 when nothing is loaded.
  int rows() const { return rows_; }
  bool hasRows() const { return rows_ > 0; }
  const std::string& text() const { return text_; }
  /// Gives the text away and leaves no rows.
  std::string take();

 private:
  std::string text_;
  int rows_ = 0;
};

/// Walks the lines of a text. The text must outlive the walk.
class IndexCursor {
 public:
  explicit IndexCursor(std::string_view text) : rest_(text) {}

  /// The next line, without its end. False behind the last.
  bool next(std::string_view& line);
  /// The next line in its fields; false also when it has not exactly ten.
  bool next(IndexLine& fields);

 private:
  std::string_view rest_;
};

}  // namespace korvenal
