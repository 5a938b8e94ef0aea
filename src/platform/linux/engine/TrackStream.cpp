#include "platform/linux/engine/TrackStream.h"

#include <libisofs/libisofs.h>

#include <cstdlib>
#include <new>

namespace korvenal {

namespace {

/// The layout of the library's stream object, which its header hides from C++ because one of the
/// members bears a reserved word as its name.
struct StreamObject {
  IsoStreamIface* methods;
  int references;
  void* data;
};

/// What stands behind such an object.
struct Numbered {
  std::unique_ptr<TrackStream> stream;
  std::uint64_t serial = 0;
};

/// Keeps the numbers of our streams apart from those of the library's own kinds.
constexpr unsigned StreamFamily = 0x4B56;

// The methods as the library calls them.

Numbered& numbered(IsoStream* stream) {
  return *static_cast<Numbered*>(reinterpret_cast<StreamObject*>(stream)->data);
}

int openStream(IsoStream* stream) {
  numbered(stream).stream->open();
  return 1;
}

int closeStream(IsoStream* stream) {
  numbered(stream).stream->close();
  return 1;
}

off_t sizeOfStream(IsoStream* stream) {
  return numbered(stream).stream->size();
}

int readStream(IsoStream* stream, void* buffer, std::size_t bytes) {
  return numbered(stream).stream->read(static_cast<char*>(buffer), bytes);
}

int isStreamRepeatable(IsoStream*) {
  return 1;
}

void idOfStream(IsoStream* stream, unsigned int* family, dev_t* device, ino_t* number) {
  *family = StreamFamily;
  *device = 0;
  *number = numbered(stream).serial;
}

void freeStream(IsoStream* stream) {
  delete &numbered(stream);
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

iso_stream* newIsoStream(std::unique_ptr<TrackStream> stream, std::uint64_t serial) {
  // The library frees the object with its own allocator.
  auto* object = static_cast<StreamObject*>(std::malloc(sizeof(StreamObject)));
  if (object == nullptr || stream == nullptr) {
    std::free(object);
    return nullptr;
  }
  auto* data = new (std::nothrow) Numbered{std::move(stream), serial};
  if (data == nullptr) {
    std::free(object);
    return nullptr;
  }
  *object = {streamMethods(), 1, data};
  return reinterpret_cast<iso_stream*>(object);
}

}  // namespace korvenal
