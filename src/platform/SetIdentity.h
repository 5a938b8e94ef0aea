#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Clock.h"

namespace korvenal {

/// Which backup a session of a disc belongs to. Labels are alike on the discs of all backups; this
/// is not. As text it stands in the volume-set id: "20261123141502-F Family photos".
struct SetIdentity {
  static constexpr std::size_t MaxBytes = 128;  ///< of the text; a volume-set id takes no more

  std::string date;  ///< 14 digits: the date of the index's header; empty when nothing is known
  char type = 0;     ///< 'F' or 'D'; 0 when it is not known
  std::string job;   ///< for people; as much of the name as the text takes

  /// Of a run that began at the moment.
  static SetIdentity ofRun(UnixTime moment, bool differential, std::string_view jobName);
  /// Of a set whose index says so; unknown when that is no date.
  static SetIdentity of(std::string_view date, char type, std::string_view jobName);
  /// Of what a volume-set id says; without a date when it says nothing of the kind.
  static SetIdentity parse(std::string_view text);

  bool isKnown() const { return !date.empty(); }
  /// Date and type decide, the date alone where a type is not known. Nothing equals the unknown.
  bool isSame(const SetIdentity& other) const;
  /// At most `MaxBytes` bytes; empty when nothing is known. An unknown type is left out.
  std::string text() const;
  /// "Family photos (2026-11-23 14:15)".
  std::string shown() const;
};

/// A session of a disc.
struct DiscSession {
  std::uint32_t start = 0;  ///< first block
  std::string label;        ///< the volume label
  SetIdentity identity;     ///< unknown on older discs and on those of other writers
};

}  // namespace korvenal
