#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Files.h"

namespace korvenal {

struct ProfileEntry {
  std::string section;
  std::string key;
  std::string value;
};

/// A text file of sections in square brackets and `key=value` lines. It is read and written key by
/// key. Of it only those values are held in memory that could not be written: they count as stored,
/// and go into the file with the next write that succeeds. A file that cannot be read is never
/// written over. Section and key names ignore case.
class Profile {
 public:
  static constexpr int BufferChars = 512;  ///< a value that fills this counts as missing

  Profile(Files& files, std::string file) : files_(files), file_(std::move(file)) {}

  /// Is told of every read and write that fails.
  OwnFileFault onFault;

  /// The value of the key. An empty value, a missing key and one of BufferChars bytes or more give
  /// the default.
  std::string doReadProfile(std::string_view section, std::string_view key,
                            std::string_view defaultValue) const;
  /// The number in the first `digits` characters of the value; text that is no number is 0.
  std::int64_t doReadProfile(std::string_view section, std::string_view key,
                             std::string_view defaultValue, int digits) const;
  /// Writes one key, making file and section when needed. A line break in the value becomes a
  /// blank.
  void doWriteProfile(std::string_view section, std::string_view key, std::string_view value);

  /// Writes many keys in their order by replacing the file once: all of them arrive, or none.
  void doWriteProfiles(const std::vector<ProfileEntry>& entries);

  const std::string& file() const { return file_; }

 private:
  /// The text of the file; nothing, told, when it is there and cannot be read.
  std::optional<std::string> fileText() const;
  void doTellFault(const std::string& text) const;

  Files& files_;
  std::string file_;
  std::vector<ProfileEntry> unwritten_;  ///< in the order of their writing
};

}  // namespace korvenal
