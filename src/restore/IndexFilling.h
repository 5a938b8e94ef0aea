#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/Fixed4.h"
#include "restore/IndexText.h"
#include "restore/RestoreTree.h"

namespace korvenal {

/// What the header line of an index tells.
struct IndexHeader {
  std::string jobName;
  std::string owner;  ///< empty when the index names none
  std::int64_t files = 0;
  std::int64_t splits = 0;
  std::int64_t discs = 0;
  Fixed4 size;          ///< bytes
  std::string created;  ///< 14 digits
};

struct IndexFilling {
  IndexHeader header;
  bool holdsKit = false;  ///< a line of the restore kit was left out; the header counts it
  bool tooDeep = false;   ///< folders were nested too deeply: the tree ends before that row
  int outlineDepth = 0;   ///< deepest level in the tree
};

/// Called before every line with its number, from 1, and the number of lines. May yield.
using FillingProgress = std::function<void(int line, int lines)>;

/// Makes the tree out of a loaded index, whose text moves into the tree. Linear in the text.
IndexFilling fillRestoreTree(IndexText& index, RestoreTree& tree, const FillingProgress& progress);

}  // namespace korvenal
