#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace korvenal {

/// The names in a folder, in the order of their bytes, one behind the other in one piece of memory.
/// A listing is filled again and again without giving its memory back.
class FolderListing {
 public:
  struct Entry {
    std::uint64_t start = 0;   ///< the name's first eight bytes as a number, to compare by
    std::size_t offset = 0;    ///< of the name in the memory
    std::uint16_t length = 0;  ///< bytes of the name
    std::uint8_t type = 0;     ///< DT_ value; DT_UNKNOWN when the file system does not tell
  };

  /// Reads all of the open folder. Calls `pause` between pieces; true from it gives up. False when
  /// something could not be read: what was read until then is there.
  bool read(int folder, const std::function<bool()>& pause);

  std::size_t size() const { return entries_.size(); }
  const Entry& operator[](std::size_t at) const { return entries_[at]; }
  /// A NUL follows the name in memory. Valid until the next `read`.
  std::string_view name(const Entry& entry) const { return {&names_[entry.offset], entry.length}; }

 private:
  void add(std::string_view name, std::uint8_t type);
  void sort(const std::function<bool()>& pause);

  std::vector<Entry> entries_;
  std::string names_;
};

}  // namespace korvenal
