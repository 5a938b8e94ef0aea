#pragma once

#include <string>
#include <vector>

#include "core/RunGrids.h"
#include "core/Workspace.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Table.h"
#include "records/HistoryFile.h"

namespace korvenal {

/// One disc attempt: a row of `vsOutput` and `vsLog`.
struct DiscRecord {
  std::string drive;       ///< "V:"
  std::string eraseMode;   ///< "Quick-erase", "Full-erase"; empty otherwise
  std::string outputTime;  ///< "yyyy-mm-dd hh:mm"
  std::string action;      ///< "Backup", "Restore"; empty for erase
  std::string jobName;
  std::string label;
  std::string discType;
  std::string note;

  std::vector<std::string> columns() const {
    return {drive, eraseMode, outputTime, action, jobName, label, discType, note};
  }
};

/// The two histories that outlast the program: discs handled and backups run. Newest first.
class Records {
 public:
  Records(Files& files, Desktop& desktop, RunGrids& grids, const Workspace& workspace);

  /// Is told of a history that cannot be read whole or be written.
  OwnFileFault onFault;

  Table vsLog;
  Table vsRecent;

  void doReadDiscLog();
  void doReadRecent();
  void doSaveDiscLog();
  void doSaveRecentBackup();
  /// Copies row `row` of `vsOutput`[runIndex] to the top of `vsLog` and saves.
  void doAddDiscLogRow(int runIndex, int row);
  /// A new row 1 of `vsRecent`, cut to its limit, and saved.
  void doAddRecent(std::vector<std::string> columns);

  // What a person does with the records. The clearing ones ask first.
  void doDeleteLogRow();  ///< the current row, if there is one
  void doClearLog();
  void doDeleteRecentRow();  ///< the current row, if there is one
  void doClearRecent();
  /// The job file of a row of `vsRecent`; empty when the row names none or it is gone.
  std::string recentJobFile(int row) const;

 private:
  void doTell(const HistoryFile& history, const std::string& fault) const;

  Files& files_;
  Desktop& desktop_;
  RunGrids& grids_;
  HistoryFile discLog_;
  HistoryFile recent_;
};

}  // namespace korvenal
