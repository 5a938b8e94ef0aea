#pragma once

#include <string>

#include "core/ActionState.h"
#include "plan/Plan.h"
#include "plan/PlanLimits.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"

namespace korvenal {

/// The password of every index. It keeps the casual browser out, and nothing more.
inline const std::string IndexPassword = "ZEPHOR";
/// First field of an index; a reader takes any that begins with the first six characters.
inline const std::string IndexStamp = "KORVEN2.0-UTF8";
inline constexpr int IndexFields = 10;

/// Writes backup indexes: one line for every row of a plan that a restore needs, ten fields
/// separated by tabs, lines ended by a carriage return and a line feed, in a zip archive with a
/// password. The first line of a finished index describes the backup.
class BackupIndex {
 public:
  struct Header {
    std::string jobName;
    std::string userName;  ///< empty when unknown
  };

  BackupIndex(Files& files, IndexArchive& archive, Desktop& desktop, const ActionState& state)
      : files_(files), archive_(archive), desktop_(desktop), state_(state) {}

  /// The longest index that is written: lines, with the header's, and bytes.
  int mostLines = MaxIndexLines;
  std::int64_t mostBytes = MaxIndexBytes;

  /// Writes the rows from 2 on to `IndexTempPath`, with a header line when one is given, and packs
  /// them under the same path; when that fails the plain text stays. Does nothing without such
  /// rows. The size of the resulting file in bytes; 0 when there is none, as for an index that
  /// would be longer than any that is read (see PlanLimits).
  Fixed4 doWriteBackupIndex(const Plan& plan, const Header* header);

 private:
  bool writeText(const Plan& plan, const Header* header);
  bool isReadable(const Plan& plan) const;

  Files& files_;
  IndexArchive& archive_;
  Desktop& desktop_;
  const ActionState& state_;
};

}  // namespace korvenal
