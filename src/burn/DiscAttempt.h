#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/Files.h"
#include "platform/Text.h"
#include "records/Records.h"

namespace korvenal {

/// One try to write one disc of a backup in one drive. Every way out of it is a note in its record.
struct DiscAttempt {
  char letter = 0;
  int number = 0;         ///< of the disc in the backup, from 1
  std::uint8_t type = 0;  ///< disc type code
  DiscRecord record;

  bool blank = false;
  bool needsErase = false;
  bool needsFormat = false;
  bool appending = false;  ///< earlier sessions stay on the disc

  int files = 0;  ///< files that the plan puts on this disc
  /// Files of this disc that went wrong: while burning, and anew while verifying.
  std::int32_t FileErrorCount = 0;
  /// Disc paths of files whose place on the disc holds padding.
  std::unordered_set<std::string> padded;
  /// In a differential backup: rows of the plan in their order, and how their sources were when the
  /// disc was prepared.
  std::vector<std::pair<int, FileInfo>> states;

  bool success = false;
  bool discError = false;  ///< counts towards the limit of failed discs
  bool endsRun = false;    ///< no other disc could do better
  bool verified = false;   ///< the disc was read again

  void doFail(std::string sentence) {
    record.note = std::move(sentence);
    discError = true;
  }
  void doStop() { record.note = "Action stop by user."; }
  void doSucceed() {
    record.note = "Success.";
    success = true;
  }
  /// The disc is done, but not all that it was to hold.
  void doNoteFileErrors() {
    if (FileErrorCount > 0) record.note = Text::counted(FileErrorCount, "backup file") + " error.";
  }
};

}  // namespace korvenal
