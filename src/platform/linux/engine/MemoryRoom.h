#pragma once

#include <cstdint>
#include <cstdlib>

namespace korvenal {

/// What the library needs for an entry of a folder that it reads, generously.
inline constexpr std::int64_t LibraryBytesPerEntry = 1024;

/// Could so many bytes be had now? For work of the libraries, which do not all survive without.
inline bool hasMemoryRoom(std::int64_t bytes) {
  // The compiler must not see that nothing is done with it.
  void* volatile room = std::malloc(static_cast<std::size_t>(bytes) + 1);
  std::free(room);
  return room != nullptr;
}

}  // namespace korvenal
