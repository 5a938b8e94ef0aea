#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "platform/linux/engine/DiscLibraries.h"
#include "platform/linux/engine/Drive.h"
#include "platform/linux/engine/IsoLayout.h"

namespace korvenal {

class TrackFeed;

/// The switches of one burn.
struct BurnOptions {
  std::string label;
  std::string volumeSet;
  bool closeDisc = false;
  bool underrunProof = true;
  bool calibrate = true;
  bool simulate = false;
};

/// What messages tell of a piece of work that has ended: the drive's own words first, then the
/// system's. All well when there is none and `well`; `otherwise` is the text when nobody says why.
DriveResult failureOf(const std::vector<LibraryMessage>& failures, bool well,
                      const std::string& otherwise);

/// One burn on a thread of its own. The starter polls; nothing is called back.
class BurnRun {
 public:
  /// Error number of a burn that was told to stop.
  static constexpr int Aborted = 125;
  /// "Disc writing failed."
  static constexpr int WriteFailed = 14848;

  BurnRun(std::shared_ptr<PreparedTrack> track, TrackPlace place, BurnOptions options);
  /// Aborts, and waits for the end.
  ~BurnRun();
  BurnRun(const BurnRun&) = delete;
  BurnRun& operator=(const BurnRun&) = delete;

  /// Takes effect within a second.
  void abort();
  bool isDone() const { return done_; }
  /// Waits for the end.
  void wait();
  std::int64_t blocksWritten() const { return written_; }
  /// Only when it is done.
  const DriveResult& result() const { return result_; }
  PreparedTrack& track() { return *track_; }

 private:
  void work();
  bool write();
  bool isImageWritable();
  /// Cancels the burn on a stop or a failure. True when it did.
  bool watch(burn::burn_drive* drive, TrackFeed& feed, std::vector<LibraryMessage>& failures);
  bool activate();
  void activateOnDrive(burn::burn_drive* drive);
  bool isFullByFault(std::int64_t written) const;
  void fail(int error, const std::string& text);
  void failBy(const std::vector<LibraryMessage>& failures);

  std::shared_ptr<PreparedTrack> track_;
  TrackPlace place_;
  BurnOptions options_;
  DriveResult result_;
  std::atomic<bool> aborted_ = false;
  std::atomic<bool> done_ = false;
  std::atomic<std::int64_t> written_ = 0;
  std::thread thread_;  ///< last: it uses all of the above
};

}  // namespace korvenal
