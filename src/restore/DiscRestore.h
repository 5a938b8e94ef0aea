#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "burn/DiscTexts.h"
#include "records/Records.h"
#include "restore/DiscRecognition.h"
#include "restore/FileRestore.h"
#include "restore/RestoreServices.h"

namespace korvenal {

/// What failed in a restore, for whoever has to tell how it ended.
struct RestoreFaults {
  int discs = 0;  ///< attempts with a disc that brought nothing
  int files = 0;
};

/// Restores from the discs in the drives, as far as they are the wanted ones of the set.
class DiscRestore {
 public:
  explicit DiscRestore(const RestoreServices& services);
  DiscRestore(const DiscRestore&) = delete;
  DiscRestore& operator=(const DiscRestore&) = delete;

  int DiscErrorCount = 0;  ///< discs that failed in this run
  RestoreFaults faults;

  /// A new restore: nothing is done yet.
  void doBeginRestore();
  /// A run begins, of a new restore or of one that goes on.
  void doBeginRun(bool goesOn);
  /// Moves on in the list of discs to one that something is still wanted from, or to its end.
  void doPassNeedlessDiscs();
  /// Takes every wanted disc that lies in a drive, in the order of the list, and returns when the
  /// next one has to be asked for, the list is done, or `StopAction` or `TaskError` is set.
  void doRestoreDiscs();
  /// A run ends, well or not. What is open when the list is done is told to be lost.
  void doEndRun();
  /// True while the target is the folder that the restore began in.
  bool isTargetThere() const { return !target_.path.empty() && target_ == targetAtHand(); }
  /// Of the whole restore so far.
  RestoreSum sum() const { return files_.sum(); }

 private:
  enum class Next { Drive, EndRun };

  /// One disc in the work, up to its record.
  struct Attempt {
    DiscInHand disc;
    DiscRecord record;
    RestoreCounts counts;
    bool failed = false;
  };

  /// The target folder; another may come to stand at its path.
  struct Target {
    std::string path;
    std::uint64_t inode = 0;
    bool operator==(const Target&) const = default;
  };

  Target targetAtHand() const;
  bool isListDone() const;
  bool isOver() const;
  int wantedDisc() const;
  void doSetUpEngine();
  /// True when a wanted disc was found in a drive.
  bool doPassOverDrives(TargetFolder& target);
  /// The drives in the order in which they are looked at: that of the index first.
  std::string drivesInOrder() const;
  /// The wanted disc, when it lies in the selected drive.
  std::optional<DiscInHand> findWantedIn(char letter);
  bool isStillThere(const DiscInHand& disc) const;
  Next doRestoreDisc(const DiscInHand& disc, TargetFolder& target);
  /// False when the person does not want to go on.
  bool doTryDisc(Attempt& attempt, TargetFolder& target);
  bool doConfirmMissing(int disc, const WantedCount& count);
  void doFail(Attempt& attempt, const std::string& note);
  void doSync(Attempt& attempt, TargetFolder& target);
  void doJudge(Attempt& attempt);
  void doCompleteNote(Attempt& attempt) const;
  void doRecord(Attempt& attempt);
  Next doAfterDisc(const Attempt& attempt);
  bool ejectsAfterDisc() const;
  std::int64_t errorMaximum() const;

  const RestoreServices& services_;
  DiscTexts texts_;
  DiscRecognition discs_;
  FileRestore files_;
  Target target_;
  std::unique_ptr<TargetFolder> held_;  ///< the target, while a run is at work
};

}  // namespace korvenal
