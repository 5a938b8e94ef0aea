#pragma once

#include <sys/stat.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "platform/linux/Descriptor.h"

struct iso_stream;

namespace korvenal {

/// What is known of a source file when it is prepared, and must still hold when it is read.
struct SourceMark {
  std::int64_t size = 0;  ///< bytes of the whole file
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;
  bool operator==(const SourceMark&) const = default;
};

/// A file that could not be put on the disc as planned.
struct FileFault {
  std::string discPath;
  std::string source;
  std::string reason;
};

/// What the streams of one burn share. The writing thread uses all of it; `faults` and the switch
/// to give up are also looked at from others.
class StreamContext {
 public:
  /// Reading goes in pieces of this size.
  static constexpr std::size_t ReadAheadBytes = 1 << 20;

  bool skipFaults = true;  ///< pads what cannot be read; else the burn is cancelled

  void addFault(FileFault fault);
  std::vector<FileFault> takeFaults();
  /// Every read fails from here on, so that a burn that is to stop does not wait for sources.
  void giveUp() { givenUp_ = true; }
  bool isGivenUp() const { return givenUp_; }
  std::vector<char>& buffer() { return buffer_; }
  /// The stream whose bytes the buffer holds; streams are read one after the other.
  const void* bufferOwner = nullptr;

 private:
  std::mutex mutex_;
  std::vector<FileFault> faults_;
  std::atomic<bool> givenUp_ = false;
  std::vector<char> buffer_ = std::vector<char>(ReadAheadBytes);
};

/// The bytes of one file on the disc: a range of a source file, opened when its turn comes.
struct StreamSource {
  std::string path;  ///< native
  std::string discPath;
  std::int64_t offset = 0;
  std::int64_t length = 0;
  SourceMark mark;
};

/// A stream of the library over `source`, with one reference for the caller; null when memory runs
/// out. `source` and `context` must outlive it. `serial` is unlike that of any other stream; the
/// files stand on the disc in its order.
iso_stream* newSourceStream(const StreamSource& source, StreamContext& context,
                            std::uint64_t serial);

/// Opens a source for reading, without waiting for a pipe. An errno and no descriptor when it is
/// no readable regular file; its status otherwise.
Descriptor openSourceFile(const std::string& path, struct stat& status, int& error);
SourceMark markOf(const struct stat& status);

}  // namespace korvenal
