#pragma once

#include <set>
#include <string>

#include "platform/TargetFolder.h"
#include "restore/DiscClaims.h"
#include "restore/DiscInHand.h"
#include "restore/ExistingFiles.h"
#include "restore/RestoreProgress.h"
#include "restore/RestoreServices.h"

namespace korvenal {

/// What became of the rows of one disc.
struct RestoreCounts {
  int restored = 0;
  int skipped = 0;
  int errors = 0;
  int folders = 0;
  bool diskFull = false;
  bool onlyLostParts = false;  ///< all that is wanted are parts of files that were given up

  bool nothingDone() const { return restored == 0 && skipped == 0 && folders == 0; }
};

/// How many of the files wanted from a disc are on it.
struct WantedCount {
  int wanted = 0;
  int found = 0;
};

/// Brings the selected rows of a disc back into the target folder. A split file stays open from
/// disc to disc until its last part is joined.
class FileRestore {
 public:
  explicit FileRestore(const RestoreServices& services);
  FileRestore(const FileRestore&) = delete;
  FileRestore& operator=(const FileRestore&) = delete;

  RestoreProgress progress;

  /// A new run: no split file is open.
  void doForgetSplitFile();
  /// Takes the options of the page for the discs that follow.
  void doBegin() { existing_.doBegin(); }

  /// Counts the files wanted from the disc and adds up their bytes.
  WantedCount doCountWanted(const DiscInHand& disc);
  /// Goes on with an open split file, then takes every selected row of the disc in table order.
  RestoreCounts doRestoreFiles(const DiscInHand& disc, TargetFolder& target);

 private:
  /// The split file that is open, and how far it is joined.
  struct SplitFile {
    int row = 0;
    int SplitNextPart = 0;  ///< part to go on with on the next disc; 0: none is open
    int SplitPartCount = 0;
    std::string SplitBaseName;  ///< on disc, without the suffix of the part
    int SplitLastDisc = 0;
    bool SplitWrite = false;  ///< false: its parts are walked but not copied
    RestoredFile target;
  };
  enum class PartResult { Done, Ended };

  bool isSelected(int row) const;
  bool isOver() const { return services_.state.StopAction || services_.state.TaskError != 0; }
  RestoredFile targetOf(int row) const;

  void doRestoreRow(int row);
  void doRestoreFolder(int row);
  void doRestoreFile(int row);
  void doRestoreSplitFile(int row);
  void doRestoreParts(int from);
  PartResult doRestorePart(int part);
  PartResult doAppendPart(int part, const std::string& source);
  PartResult doMissPart(int part);
  PartResult doLosePart(const std::string& fault);
  bool isLostOn(int row, int disc) const;
  void doTellLostFiles();
  FileOutcome appendTo(const std::string& source, bool first);
  void doCountFailure(const FileOutcome& outcome, const std::string& text, const std::string& file);
  void doAddErrorRow(const std::string& message, const std::string& file);
  CopyProgress copyProgress();

  const RestoreServices& services_;
  RestorePage& page_;
  ExistingFiles existing_;
  DiscClaims claims_;
  SplitFile split_;
  std::set<int> begun_;  ///< rows of the split files that this run has begun or told to be lost
  DiscInHand disc_;
  TargetFolder* target_ = nullptr;  ///< of the call under way
  RestoreCounts counts_;
};

}  // namespace korvenal
