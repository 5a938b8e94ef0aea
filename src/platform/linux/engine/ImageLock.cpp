#include "platform/linux/engine/ImageLock.h"

#include <fcntl.h>

#include <cerrno>

namespace korvenal {

namespace {

/// The whole file, however long it becomes.
struct flock wholeFile(short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return lock;
}

Descriptor openToLock(const std::string& image) {
  constexpr int Flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  Descriptor file(::open(image.c_str(), O_RDWR | Flags));
  // Of what may only be read, no more than a lock for reading is needed.
  if (!file) file.reset(::open(image.c_str(), O_RDONLY | Flags));
  return file;
}

}  // namespace

bool ImageLock::take(const std::string& image, ImageUse use) {
  if (!file_) file_ = openToLock(image);
  struct flock lock = wholeFile(use == ImageUse::Written ? F_WRLCK : F_RDLCK);
  // Such a lock belongs to the descriptor: neither a second one of this process nor the burning
  // library, which opens the image by itself, ends it.
  if (file_ && ::fcntl(file_.get(), F_OFD_SETLK, &lock) != 0 &&
      (errno == EAGAIN || errno == EACCES)) {
    if (use_ == ImageUse::None) file_.reset();
    return false;
  }
  use_ = use;
  return true;
}

void ImageLock::release() {
  file_.reset();
  use_ = ImageUse::None;
}

ImageUse ImageLock::others(const std::string& image) const {
  // Asked through the descriptor of a lock at hand, that one does not count.
  const Descriptor own =
      file_ ? Descriptor() : Descriptor(::open(image.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  const int file = file_ ? file_.get() : own.get();
  struct flock lock = wholeFile(F_WRLCK);
  if (file < 0 || ::fcntl(file, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK)
    return ImageUse::None;
  return lock.l_type == F_WRLCK ? ImageUse::Written : ImageUse::Read;
}

}  // namespace korvenal
