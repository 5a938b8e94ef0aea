#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "platform/BurnEngine.h"
#include "platform/linux/engine/SourceState.h"

struct iso_stream;

namespace korvenal {

/// What the streams of one burn share. The writing thread uses all of it; faults and the switch to
/// give up are also looked at from others.
class StreamContext {
 public:
  /// Reading goes in pieces of this size.
  static constexpr std::size_t ReadAheadBytes = 1 << 20;

  bool skipFaults = true;      ///< pads what cannot be read; else the burn is cancelled
  std::int64_t listBytes = 0;  ///< size of the list of faults on the disc; 0: there is none

  /// False when the file may not be padded: the burn is to be cancelled, because nothing on the
  /// disc would tell the padding from the file.
  bool addFault(FileFault fault);
  /// Those since the last call.
  std::vector<FileFault> takeFaults();
  /// The text of the list of all faults, `listBytes` long.
  std::string listText();
  /// Every read fails from here on, so that a burn that is to stop does not wait for sources.
  void giveUp() { givenUp_ = true; }
  bool isGivenUp() const { return givenUp_; }
  std::vector<char>& buffer() { return buffer_; }
  /// The stream whose bytes the buffer holds; streams are read one after the other.
  const void* bufferOwner = nullptr;

 private:
  std::mutex mutex_;
  std::vector<FileFault> faults_;
  std::vector<std::string> unsaved_;  ///< disc paths of all that the list takes
  std::atomic<bool> givenUp_ = false;
  std::vector<char> buffer_ = std::vector<char>(ReadAheadBytes);
};

/// The bytes of one file on the disc: a range of a source file, opened when its turn comes.
struct StreamSource {
  std::string path;  ///< native
  std::string discPath;
  std::int64_t offset = 0;
  std::int64_t length = 0;
  SourceState state;  ///< as it was prepared, which must still hold when it is read
};

/// A stream of the library over `source`, with one reference for the caller; null when memory runs
/// out. `source` and `context` must outlive it. `serial` as in `newIsoStream`.
iso_stream* newSourceStream(const StreamSource& source, StreamContext& context,
                            std::uint64_t serial);
/// The list of faults as a file of the track; it must be read last. Otherwise as above.
iso_stream* newFaultListStream(StreamContext& context, std::uint64_t serial);

}  // namespace korvenal
