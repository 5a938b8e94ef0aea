#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

struct iso_stream;

namespace korvenal {

/// The bytes of one file of a track, as the library that writes the tree asks for them: on the
/// writing thread, one stream after the other.
class TrackStream {
 public:
  virtual ~TrackStream() = default;
  /// Bytes; asked anew for every run over the tree.
  virtual std::int64_t size() const = 0;
  virtual void open() = 0;
  virtual void close() = 0;
  /// Up to `bytes` bytes; the library's code below 0 cancels the burn.
  virtual int read(char* buffer, std::size_t bytes) = 0;
};

/// The stream as an object of the library, with one reference for the caller; null when memory runs
/// out. `serial` is unlike that of any other stream; the files stand on the disc in its order.
iso_stream* newIsoStream(std::unique_ptr<TrackStream> stream, std::uint64_t serial);

}  // namespace korvenal
