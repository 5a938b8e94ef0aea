#pragma once

#include <string>

#include "platform/ImageTrays.h"
#include "platform/linux/Descriptor.h"

namespace korvenal {

/// Tells other programs that an image is at work. Many may read one at a time, but who writes is
/// alone with it. The lock goes with the process, so a crash leaves none behind; a file system
/// that knows no locks has no way to tell.
class ImageLock {
 public:
  /// Takes the lock for reading or for writing, or turns the one at hand into it. False when
  /// another program stands in the way; the lock at hand stays as it is then.
  bool take(const std::string& image, ImageUse use);
  void release();
  /// What other programs do with the image.
  ImageUse others(const std::string& image) const;

 private:
  Descriptor file_;
  ImageUse use_ = ImageUse::None;
};

}  // namespace korvenal
