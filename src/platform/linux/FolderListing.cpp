#include "platform/linux/FolderListing.h"

#include <dirent.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace korvenal {

namespace {

constexpr std::size_t BufferBytes = 64 << 10;
constexpr std::size_t ComparisonsAPause = 64 << 10;  ///< a few milliseconds

std::uint64_t firstBytesAsNumber(std::string_view name) {
  std::array<unsigned char, 8> bytes{};
  std::memcpy(bytes.data(), name.data(), std::min(name.size(), bytes.size()));
  std::uint64_t number = 0;
  for (const unsigned char byte : bytes) number = number << 8 | byte;
  return number;
}

}  // namespace

bool FolderListing::read(int folder, const std::function<bool()>& pause) {
  entries_.clear();
  names_.clear();
  alignas(dirent64) std::array<char, BufferBytes> buffer;
  bool complete = true;
  // The library's own readdir would allocate a buffer and ask for the state of every folder.
  for (;;) {
    const long bytes = ::syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
    if (bytes < 0 && errno == EINTR) continue;
    complete = bytes >= 0;
    if (bytes <= 0) break;
    for (long at = 0; at < bytes;) {
      const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") add(name, entry->d_type);
      at += entry->d_reclen;
    }
    if (pause()) break;
  }
  sort(pause);
  return complete;
}

void FolderListing::add(std::string_view name, std::uint8_t type) {
  entries_.push_back(
      {firstBytesAsNumber(name), names_.size(), static_cast<std::uint16_t>(name.size()), type});
  names_.append(name).push_back('\0');
}

void FolderListing::sort(const std::function<bool()>& pause) {
  std::size_t compared = 0;
  std::sort(entries_.begin(), entries_.end(), [&](const Entry& a, const Entry& b) {
    if (++compared % ComparisonsAPause == 0) pause();
    return a.start != b.start ? a.start < b.start : name(a) < name(b);
  });
}

}  // namespace korvenal
