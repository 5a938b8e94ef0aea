#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/ActionState.h"
#include "core/Workspace.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Table.h"

namespace korvenal {

/// Headers of `vsOutput` and of the disc record that outlasts the program.
inline const std::vector<std::string> DiscRecordHeaders = {
    "Drive", "Disc#", "Output Time", "Action", "Backup Job", "Label ID", "Disc Type", "Note"};

/// A progress line: a text and a bar of 0 to 100.
struct Progress {
  std::string text;
  int bar = 0;
  // Of the disc in hand, while data runs to or from it; a total of 0 where bytes mean nothing.
  std::int64_t bytesDone = 0;
  std::int64_t bytesTotal = 0;
};

/// How a line of the event grid looks.
struct EventStyle {
  enum class Color { Normal, Red, Blue };
  enum class Background { None, Orange, Yellow, Green };
  Color color = Color::Normal;
  Background background = Background::None;
};

/// The grids of the run pages, by page: 0 backup, 1 restore, 2 erase. The one place where runs
/// tell what they do; front ends show it.
class RunGrids {
 public:
  RunGrids(ActionState& state, Desktop& desktop, const Clock& clock, Files& files,
           const Workspace& workspace);

  std::array<Table, 3> vsEvent;   ///< time "hh:mm:ss", text; cell data of column 1: the mark
  std::array<Table, 3> vsOutput;  ///< one row a disc attempt, columns of the disc record
  std::array<Table, 2> vsError;   ///< 0 verify report of a disc, 1 errors of a restore
  std::array<Progress, 3> etProgress;
  /// Captions of the report tabs: "&Verify Report", followed by " - " and the label of the disc
  /// in view.
  std::array<std::string, 2> PBErrorList{"&Verify Report", "Error Record"};
  bool OnlyShowErrorFile = false;

  /// The one channel of run messages. A first character '*', '$', '?' or '%' is a mark. Yields:
  /// callers hold no half-changed table across it.
  void doEventMessage(const std::string& msg, bool shade = false);
  /// The style of a row of vsEvent.
  EventStyle styleOf(int page, int row) const;

  /// Empties events, records and progress of a page.
  void clearPage(int page);

  /// Which disc of the run a record is about: its place in the plan or in the list of discs wanted,
  /// from 1. 0 for a record of an earlier run.
  int discOf(int page, int row) const;
  void setDiscOf(int page, int row, int place);
  /// The disc of a backup record was read again, well or not.
  bool isVerified(int row) const;
  void setVerified(int row);
  /// A run starts over: the records so far are about none of its discs.
  void doForgetDiscs(int page);

  // A report may have a million rows: what follows lets the front end work while it looks at them,
  // and no other command but the filter begins meanwhile.

  /// Empties `vsError` of a page.
  void doClearReport(int page = 0);
  /// The report of the n-th record: `vsError`[0] to its file, and back.
  void doSaveDiscReport(int n);
  void doShowDiscReport(int n);
  /// Applies `OnlyShowErrorFile` to the rows of the report in view: hides the good ones ("PASS").
  void doFilterReport();
  /// Deletes the reports of this start of the program. Those that a killed one left stay until a
  /// run writes its own: they are all that tells of its discs.
  void doDeleteRunLogs();
  /// A path for the burn log: `TempFolder`, prefix, "Log", the date; a number when it is in use.
  std::string doGetBurnLogPath(const std::string& prefix);

 private:
  void doLoadReport(const std::string& path);
  void doDeleteReports();
  void doEachPiece(const std::function<void(int from, int to)>& work);

  ActionState& state_;
  Desktop& desktop_;
  const Clock& clock_;
  Files& files_;
  const Workspace& workspace_;
  bool ownReports_ = false;  ///< the files of reports are of this start of the program
  std::array<std::vector<EventStyle>, 3> styles_;
};

}  // namespace korvenal
