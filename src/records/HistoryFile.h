#pragma once

#include <string>

#include "platform/Files.h"
#include "platform/Table.h"

namespace korvenal {

/// The file of one history: a table without check states, newest row first. Damage never costs more
/// than the lines that it struck, and what cannot be read is never written over: the file as it was
/// is kept beside, with the ending ".damaged". Faults are told as sentences; an empty one is none.
class HistoryFile {
 public:
  /// Rows of the history have `cols` columns.
  HistoryFile(Files& files, std::string path, int cols)
      : files_(files), path_(std::move(path)), cols_(cols) {}

  const std::string& path() const { return path_; }
  /// Fills the table. A missing file is an empty history.
  std::string doLoad(Table& table);
  /// Writes the table. A history that could not be read is taken in first if it can be now.
  std::string doSave(Table& table);

 private:
  /// What stands in the file before what is at hand may be written.
  enum class Before {
    Known,    ///< nothing but what was read
    Damaged,  ///< more than was read
    Unread,   ///< nobody knows
  };

  std::string doTakeEarlier(Table& table);
  std::string doKeepAside();
  std::string doWrite(const Table& table);

  Files& files_;
  std::string path_;
  int cols_;
  Before before_ = Before::Known;
};

}  // namespace korvenal
