#include "platform/linux/engine/SourceStream.h"

#include <fcntl.h>
#include <libisofs/libisofs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <system_error>

namespace korvenal {

namespace {

/// The layout of the library's stream object, which its header hides from C++ because one of the
/// members bears a reserved word as its name.
struct StreamObject {
  IsoStreamIface* methods;
  int references;
  void* data;
};

/// Keeps the numbers of our streams apart from those of the library's own kinds.
constexpr unsigned StreamFamily = 0x4B56;

constexpr const char* ChangedText = "The file has changed";

class SourceStream {
 public:
  SourceStream(const StreamSource& source, StreamContext& context, std::uint64_t serial)
      : source_(source), context_(context), serial_(serial) {}

  std::int64_t size() const { return source_.length; }
  std::uint64_t serial() const { return serial_; }

  void open();
  void close();
  int read(char* buffer, std::size_t bytes);

 private:
  int fill();
  int fail(const std::string& reason);
  void checkUnchanged();

  const StreamSource& source_;
  StreamContext& context_;
  std::uint64_t serial_;
  Descriptor file_;
  std::int64_t position_ = 0;  ///< bytes handed out
  std::size_t held_ = 0;       ///< bytes in the buffer
  std::size_t used_ = 0;       ///< of them handed out
  bool failed_ = false;
};

void SourceStream::open() {
  position_ = 0;
  held_ = used_ = 0;
  failed_ = false;
  context_.bufferOwner = this;
}

void SourceStream::close() {
  file_.reset();
  if (context_.bufferOwner == this) context_.bufferOwner = nullptr;
}

int SourceStream::fail(const std::string& reason) {
  if (!failed_) context_.addFault({source_.discPath, source_.path, reason});
  failed_ = true;
  file_.reset();
  return context_.skipFaults ? 0 : static_cast<int>(ISO_CANCELED);
}

void SourceStream::checkUnchanged() {
  struct stat status {};
  if (::fstat(file_.get(), &status) != 0) return;
  // All bytes came, but perhaps from two states of the file.
  if (markOf(status) != source_.mark) fail(ChangedText);
}

/// Reads the next piece into the buffer. 0, or the code that cancels the burn.
int SourceStream::fill() {
  used_ = held_ = 0;
  if (!file_) {
    struct stat status {};
    int error = 0;
    file_ = openSourceFile(source_.path, status, error);
    if (!file_) return fail(std::system_category().message(error));
    if (markOf(status) != source_.mark) return fail(ChangedText);
  }
  const std::int64_t left = source_.length - position_;
  const auto wanted =
      static_cast<std::size_t>(std::min<std::int64_t>(left, StreamContext::ReadAheadBytes));
  while (held_ < wanted) {
    const ssize_t got = ::pread(file_.get(), context_.buffer().data() + held_, wanted - held_,
                                source_.offset + position_ + static_cast<std::int64_t>(held_));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return fail(std::system_category().message(errno));
    if (got == 0) return fail(ChangedText);
    held_ += static_cast<std::size_t>(got);
  }
  if (held_ == static_cast<std::size_t>(left)) {
    checkUnchanged();
    if (failed_ && !context_.skipFaults) return static_cast<int>(ISO_CANCELED);
    file_.reset();
  }
  return 0;
}

int SourceStream::read(char* buffer, std::size_t bytes) {
  if (context_.isGivenUp() || context_.bufferOwner != this) return static_cast<int>(ISO_CANCELED);
  bytes = static_cast<std::size_t>(
      std::min<std::int64_t>(source_.length - position_, static_cast<std::int64_t>(bytes)));
  std::size_t done = 0;
  while (done < bytes) {
    if (used_ == held_ && !failed_) {
      const int result = fill();
      if (result < 0) return result;
    }
    std::size_t piece = std::min(held_ - used_, bytes - done);
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

// The methods as the library calls them.

SourceStream& streamOf(IsoStream* stream) {
  return *static_cast<SourceStream*>(reinterpret_cast<StreamObject*>(stream)->data);
}

int openStream(IsoStream* stream) {
  streamOf(stream).open();
  return 1;
}

int closeStream(IsoStream* stream) {
  streamOf(stream).close();
  return 1;
}

off_t sizeOfStream(IsoStream* stream) {
  return streamOf(stream).size();
}

int readStream(IsoStream* stream, void* buffer, std::size_t bytes) {
  return streamOf(stream).read(static_cast<char*>(buffer), bytes);
}

int isStreamRepeatable(IsoStream*) {
  return 1;
}

void idOfStream(IsoStream* stream, unsigned int* family, dev_t* device, ino_t* number) {
  *family = StreamFamily;
  *device = 0;
  *number = streamOf(stream).serial();
}

void freeStream(IsoStream* stream) {
  delete &streamOf(stream);
}

int keepStreamSize(IsoStream*) {
  return 1;
}

IsoStream* noInputStream(IsoStream*, int) {
  return nullptr;
}

IsoStreamIface* streamMethods() {
  static IsoStreamIface methods = {3,
                                   {'u', 's', 'e', 'r'},
                                   openStream,
                                   closeStream,
                                   sizeOfStream,
                                   readStream,
                                   isStreamRepeatable,
                                   idOfStream,
                                   freeStream,
                                   keepStreamSize,
                                   noInputStream,
                                   nullptr,
                                   nullptr};
  return &methods;
}

}  // namespace

void StreamContext::addFault(FileFault fault) {
  const std::lock_guard lock(mutex_);
  faults_.push_back(std::move(fault));
}

std::vector<FileFault> StreamContext::takeFaults() {
  const std::lock_guard lock(mutex_);
  return std::exchange(faults_, {});
}

iso_stream* newSourceStream(const StreamSource& source, StreamContext& context,
                            std::uint64_t serial) {
  auto* object = static_cast<StreamObject*>(std::malloc(sizeof(StreamObject)));
  if (object == nullptr) return nullptr;
  auto* data = new (std::nothrow) SourceStream(source, context, serial);
  if (data == nullptr) {
    std::free(object);
    return nullptr;
  }
  *object = {streamMethods(), 1, data};
  return reinterpret_cast<iso_stream*>(object);
}

SourceMark markOf(const struct stat& status) {
  return {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

Descriptor openSourceFile(const std::string& path, struct stat& status, int& error) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file || ::fstat(file.get(), &status) != 0) {
    error = errno;
    return {};
  }
  if (!S_ISREG(status.st_mode)) {
    error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return {};
  }
  return file;
}

}  // namespace korvenal
