#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>

#include "platform/TargetFolder.h"
#include "restore/DiscClaims.h"
#include "restore/DiscInHand.h"
#include "restore/ExistingFiles.h"
#include "restore/MadeFolders.h"
#include "restore/RestoreProgress.h"
#include "restore/RestoreServices.h"
#include "restore/RestoredRows.h"

namespace korvenal {

/// What became of the rows of one disc.
struct RestoreCounts {
  int restored = 0;
  int skipped = 0;
  int errors = 0;
  int folders = 0;
  // What ended the work with the disc before its last row.
  bool diskFull = false;
  bool discGone = false;    ///< it left the drive, or the drive reads nothing any more
  std::string targetFault;  ///< why the target takes nothing at all; empty: it does

  bool nothingDone() const { return restored == 0 && skipped == 0 && folders == 0; }
};

/// How many of the files wanted from a disc are on it.
struct WantedCount {
  int wanted = 0;
  int found = 0;
};

/// Brings the selected rows of a disc back into the target folder. A split file stays open from
/// disc to disc until its last part is joined, through a stop too. A row that was brought back,
/// skipped or told as an error is not touched again in the same restore; one that was interrupted
/// by a stop, a full disk, or a disc or target that went away is taken up again.
class FileRestore {
 public:
  explicit FileRestore(const RestoreServices& services);
  FileRestore(const FileRestore&) = delete;
  FileRestore& operator=(const FileRestore&) = delete;

  RestoreProgress progress;

  /// A new restore: nothing is done, no split file is open.
  void doBeginRestore();
  /// A restore that was stopped goes on: what it made can be written to again.
  void doGoOn(TargetFolder& target) { made_.open(target, services_.desktop); }
  /// Takes the options of the page for the discs that follow.
  void doBegin() { existing_.doBegin(); }

  /// True when something is still wanted from the disc.
  bool isNeeded(int disc) const;
  /// True when parts lie there of files that are not joined.
  bool hasPartsInVain(int disc) const;
  /// Counts the files wanted from the disc and adds up their bytes.
  WantedCount doCountWanted(const DiscInHand& disc);
  /// Goes on with an open split file, then takes every wanted row of the disc in table order.
  /// `isThere` tells whether the disc still lies in its drive.
  RestoreCounts doRestoreFiles(const DiscInHand& disc, TargetFolder& target,
                               std::function<bool()> isThere);
  /// The medium of the target did not take what came from the disc in hand: it is wanted again.
  void doDistrustDisc();

  /// No disc comes any more. Tells what was brought back from none; the number of these files.
  int doGiveUpOpenRows();
  /// The restore ends or is interrupted. A split file that is open is told; folders get their look.
  void doEndRun(TargetFolder* target);
  RestoreSum sum() const { return rows_.sum(); }

 private:
  using Outcome = RestoredRows::Outcome;

  /// The split file that is open, and how far it is joined.
  struct SplitFile {
    int row = 0;            ///< 0: none is open
    int SplitNextPart = 1;  ///< part to go on with
    int SplitPartCount = 0;
    std::string SplitBaseName;  ///< on disc, without the suffix of the part
    int SplitLastDisc = 0;
    RestoredFile target;
    Fixed4 joined;                     ///< bytes of the parts before SplitNextPart
    std::unique_ptr<JoinedFile> file;  ///< from the first part on
    bool told = false;                 ///< that it is not whole
  };

  bool isSplitOpen() const { return split_.row != 0; }
  bool isOver() const;
  RestoredFile targetOf(int row) const;
  bool mayWrite(int row, const RestoredFile& file);
  bool isNameTaken(int row, const RestoredFile& file) const;
  void noteFolders(int row, const std::string& path);
  void settle(int row, Outcome outcome);

  void doRestoreRow(int row);
  void doRestoreFolder(int row);
  void doRestoreFile(int row);
  void doCopyFile(int row, const std::string& source, const RestoredFile& file);
  void doRestoreSplitFile(int row);
  void doRestoreParts();
  bool doRestorePart();
  FileOutcome doAppendPart(const std::string& source);
  void doFinishSplitFile();
  void doMissPart();
  void doGiveUpSplitFile(const std::string& message);

  bool isDiscGone();
  bool isTargetClosed(const FileOutcome& outcome);
  bool isRowsOwnFault(const FileOutcome& outcome, const std::string& text, const std::string& file);
  void doTellFault(const FileOutcome& outcome, const std::string& text, const std::string& file);
  void doCountError(const std::string& message, const std::string& file);
  void doAddErrorRow(const std::string& message, const std::string& file);
  CopyProgress copyProgress();

  const RestoreServices& services_;
  RestorePage& page_;
  ExistingFiles existing_;
  DiscClaims claims_;
  bool isPaddingUnknown_ = false;  ///< the disc's list of files not saved cannot be read
  RestoredRows rows_;
  MadeFolders made_;
  SplitFile split_;
  std::unordered_set<std::size_t> namesTaken_;  ///< keys of the paths that this restore wrote
  bool anyWritten_ = false;                     ///< in this restore
  std::vector<int> settled_;                    ///< rows that the disc in hand brought to an end
  // Of the call under way.
  DiscInHand disc_;
  TargetFolder* target_ = nullptr;
  std::function<bool()> isThere_;
  RestoreCounts counts_;
};

}  // namespace korvenal
