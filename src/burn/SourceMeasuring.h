#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/SourceChanges.h"

namespace korvenal {

/// Looks at the sources of a disc before its track is prepared. What is there is burned as it is
/// now; what is not is told with its reason and left out, or asked about when errors are not to be
/// skipped. The rows of the plan tell afterwards what the disc will hold.
class SourceMeasuring {
 public:
  SourceMeasuring(BurnServices& services, SourceChanges& changes)
      : services_(services), changes_(changes) {}

  /// Before the layout is made: the split files whose pieces go on the disc are taken as they are
  /// now, or are lost; asked about like others that cannot be saved, and a stop may come of it.
  void doFitSplitFiles(const DiscAttempt& attempt);
  /// The layout of the disc stands; `files` are the rows of its files, in the order in which they
  /// were inserted. False when it was stopped.
  bool doMeasure(DiscAttempt& attempt, const std::vector<int>& files);
  /// The track is too large by so many blocks: files that have grown since the scan are left out,
  /// the largest growth first. False when there is none.
  bool doTakeOutGrown(const std::vector<int>& files, std::int64_t blocks);
  /// Nothing on the disc will tell the sizes of files that differ from those in the index of the
  /// discs before: such files are left out.
  void doTakeOutChanged(const std::vector<int>& files);
  /// Tells that the file of a row is not saved, and why.
  void doTellLost(int row, const std::string& reason);

 private:
  enum class Wish { Skip, Retry, Stop };

  bool doFitSplitFile(int piece);
  bool doLook(const std::vector<int>& files, bool& again);
  Wish doAskAbout(int row, const std::string& reason);
  void doJudgePieces(const std::vector<int>& files);
  void doLeaveOut(const std::vector<int>& files, std::int32_t file, const std::string& reason);
  void doKeepStates(DiscAttempt& attempt, const std::vector<int>& files);

  BurnServices& services_;
  SourceChanges& changes_;
};

}  // namespace korvenal
