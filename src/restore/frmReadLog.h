#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Form.h"
#include "platform/Table.h"

namespace korvenal {

/// A backup index found on a drive.
struct FoundIndex {
  std::string drive;  ///< "V:"
  std::string name;   ///< the part of the file name between "{" and "}": job and stamp
  std::string path;   ///< of the file, in the tree of its session
};
/// What a search found, in the order of the drives.
using FoundIndexes = std::vector<FoundIndex>;

/// Columns of `frmReadLog::vsIndex`.
enum ReadLogColumn : int {
  ReadLogDrive = 0,
  ReadLogJob = 1,
  ReadLogDate = 2,
  ReadLogType = 3,
  ReadLogName = 4,
};

/// The choice between several indexes. Reads the chosen one before it closes.
class frmReadLog : public Form {
 public:
  using ReadIndex = std::function<void(const FoundIndex&)>;

  frmReadLog(const FoundIndexes& indexes, ReadIndex readIndex);

  Table vsIndex;        ///< one row an index; `vsIndex.Row` is the chosen one
  std::string message;  ///< what is being done
  bool buttonsEnabled = true;

  void pbOK();
  void pbCancel() { doCloseBox(); }
  /// A double click on a row of `vsIndex`.
  void doOpenRow(int row);
  /// Nothing closes the dialog while an index is being read.
  void doCloseBox() override;

 private:
  ReadIndex readIndex_;
};

}  // namespace korvenal
