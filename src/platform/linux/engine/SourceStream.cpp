#include "platform/linux/engine/SourceStream.h"

#include <libisofs/libisofs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <new>
#include <string_view>
#include <system_error>

#include "platform/FaultList.h"
#include "platform/linux/engine/TrackStream.h"

namespace korvenal {

namespace {

constexpr const char* ChangedInBurn = "The file was changed while it was burned";
constexpr int CancelBurn = static_cast<int>(ISO_CANCELED);
constexpr int Rereadings = 3;  ///< of a file whose change time moves again and again

/// The content that was handed out, piece by piece.
class ContentDigest {
 public:
  void add(std::string_view piece) {
    constexpr std::uint64_t Odd = 0x9E3779B97F4A7C15;
    value_ = (value_ ^ std::hash<std::string_view>()(piece)) * Odd;
    value_ ^= value_ >> 32;
  }
  bool operator==(const ContentDigest&) const = default;

 private:
  std::uint64_t value_ = 0;
};

class SourceStream : public TrackStream {
 public:
  SourceStream(const StreamSource& source, StreamContext& context)
      : source_(source), context_(context) {}

  std::int64_t size() const override { return source_.length; }
  void open() override;
  void close() override;
  int read(char* buffer, std::size_t bytes) override;

 private:
  int openSource();
  int fill();
  int readPiece(std::int64_t from);
  int checkUnchanged();
  int readAgain();
  int fail(const std::string& reason);

  const StreamSource& source_;
  StreamContext& context_;
  Descriptor file_;
  SourceState opened_;
  ContentDigest digest_;
  std::int64_t position_ = 0;  ///< bytes handed out
  std::size_t held_ = 0;       ///< bytes in the buffer
  std::size_t used_ = 0;       ///< of them handed out
  bool failed_ = false;
};

void SourceStream::open() {
  position_ = 0;
  held_ = used_ = 0;
  failed_ = false;
  digest_ = {};
  context_.bufferOwner = this;
}

void SourceStream::close() {
  file_.reset();
  if (context_.bufferOwner == this) context_.bufferOwner = nullptr;
}

/// 0 when the rest of the file is padded, or the code that cancels the burn.
int SourceStream::fail(const std::string& reason) {
  const bool listed = failed_ || context_.addFault({source_.discPath, source_.path, reason});
  failed_ = true;
  file_.reset();
  return listed && context_.skipFaults ? 0 : CancelBurn;
}

int SourceStream::openSource() {
  int error = 0;
  file_ = openSourceFile(source_.path, opened_, error);
  if (!file_) return fail(std::system_category().message(error));
  if (!opened_.looksLike(source_.state)) return fail(ChangedInBurn);
  // A new mode, owner or link explains a change time that moved alone. Without such a cause the
  // file was rewritten and its time put back.
  // A piece goes with pieces that were read from that file, not from one put in its place.
  const bool isWhole = source_.length == source_.state.size;
  const bool isOther = !isWhole && opened_.inode != source_.state.inode;
  const bool explained = opened_.changed == source_.state.changed ||
                         (opened_.keeping != source_.state.keeping && !isOther);
  return explained ? 0 : fail(ChangedInBurn);
}

/// Reads the piece that begins so many bytes behind the start of the range into the buffer.
int SourceStream::readPiece(std::int64_t from) {
  const auto wanted = static_cast<std::size_t>(
      std::min<std::int64_t>(source_.length - from, StreamContext::ReadAheadBytes));
  held_ = 0;
  while (held_ < wanted) {
    const ssize_t got = ::pread(file_.get(), context_.buffer().data() + held_, wanted - held_,
                                source_.offset + from + static_cast<std::int64_t>(held_));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return fail(std::system_category().message(errno));
    if (got == 0) return fail(ChangedInBurn);
    held_ += static_cast<std::size_t>(got);
  }
  return 0;
}

/// All bytes came, but perhaps from two states of the file.
int SourceStream::checkUnchanged() {
  for (int round = 0; round < Rereadings; ++round) {
    struct stat status {};
    if (::fstat(file_.get(), &status) != 0) return fail(std::system_category().message(errno));
    const SourceState now = SourceState::of(status);
    if (!now.looksLike(opened_)) return fail(ChangedInBurn);
    if (now.changed == opened_.changed) return 0;
    opened_ = now;
    if (const int result = readAgain(); result != 0 || failed_) return result;
  }
  return fail(ChangedInBurn);
}

/// Settles whether the content that was handed out is still that of the file. The last piece is in
/// the buffer afterwards, as before.
int SourceStream::readAgain() {
  ContentDigest again;
  for (std::int64_t from = 0; from < source_.length;) {
    if (context_.isGivenUp()) return CancelBurn;
    if (const int result = readPiece(from); result != 0 || failed_) return result;
    again.add({context_.buffer().data(), held_});
    from += static_cast<std::int64_t>(held_);
  }
  return again == digest_ ? 0 : fail(ChangedInBurn);
}

/// Reads the next piece into the buffer. 0, or the code that cancels the burn.
int SourceStream::fill() {
  used_ = held_ = 0;
  if (!file_) {
    if (const int result = openSource(); result != 0 || failed_) return result;
  }
  const std::int64_t left = source_.length - position_;
  if (const int result = readPiece(position_); result != 0 || failed_) return result;
  digest_.add({context_.buffer().data(), held_});
  if (held_ != static_cast<std::size_t>(left)) return 0;
  const int result = checkUnchanged();
  file_.reset();
  return result;
}

int SourceStream::read(char* buffer, std::size_t bytes) {
  if (context_.isGivenUp() || context_.bufferOwner != this) return CancelBurn;
  bytes = static_cast<std::size_t>(
      std::min<std::int64_t>(source_.length - position_, static_cast<std::int64_t>(bytes)));
  std::size_t done = 0;
  while (done < bytes) {
    if (used_ == held_ && !failed_) {
      const int result = fill();
      if (result < 0) return result;
    }
    std::size_t piece = failed_ ? 0 : std::min(held_ - used_, bytes - done);
    if (piece > 0) {
      std::memcpy(buffer + done, context_.buffer().data() + used_, piece);
      used_ += piece;
    } else {
      piece = bytes - done;  // a skipped file keeps its promised length
      std::memset(buffer + done, 0, piece);
    }
    done += piece;
    position_ += static_cast<std::int64_t>(piece);
  }
  return static_cast<int>(done);
}

/// The list of the faults so far, whose text is made when its turn comes.
class FaultListStream : public TrackStream {
 public:
  explicit FaultListStream(StreamContext& context) : context_(context) {}

  std::int64_t size() const override { return context_.listBytes; }
  void open() override {
    text_ = context_.listText();
    position_ = 0;
  }
  void close() override { text_.clear(); }
  int read(char* buffer, std::size_t bytes) override {
    if (context_.isGivenUp() || static_cast<std::int64_t>(text_.size()) != context_.listBytes)
      return CancelBurn;
    const std::size_t piece = text_.copy(buffer, bytes, position_);
    position_ += piece;
    return static_cast<int>(piece);
  }

 private:
  StreamContext& context_;
  std::string text_;
  std::size_t position_ = 0;
};

}  // namespace

bool StreamContext::addFault(FileFault fault) {
  const std::lock_guard lock(mutex_);
  unsaved_.push_back(fault.discPath);
  faults_.push_back(std::move(fault));
  if (FaultList::format(unsaved_, listBytes)) return true;
  unsaved_.pop_back();
  return false;
}

std::vector<FileFault> StreamContext::takeFaults() {
  const std::lock_guard lock(mutex_);
  return std::exchange(faults_, {});
}

std::string StreamContext::listText() {
  const std::lock_guard lock(mutex_);
  return FaultList::format(unsaved_, listBytes).value_or("");
}

iso_stream* newSourceStream(const StreamSource& source, StreamContext& context,
                            std::uint64_t serial) {
  return newIsoStream(
      std::unique_ptr<TrackStream>(new (std::nothrow) SourceStream(source, context)), serial);
}

iso_stream* newFaultListStream(StreamContext& context, std::uint64_t serial) {
  return newIsoStream(std::unique_ptr<TrackStream>(new (std::nothrow) FaultListStream(context)),
                      serial);
}

}  // namespace korvenal
