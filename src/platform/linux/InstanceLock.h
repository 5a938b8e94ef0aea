#pragma once

#include <string>

#include "platform/linux/Descriptor.h"

namespace korvenal {

/// Keeps a second program from working on the same application folder. The lock goes with the
/// process, so a crash leaves none behind.
class InstanceLock {
 public:
  /// Tries to take the lock; the folder exists.
  explicit InstanceLock(const std::string& applicationFolder);
  /// False: another program is at work there.
  bool isFirst() const { return first_; }
  /// The lock is held. A folder that takes none lets any number of programs work on it: none of
  /// them may clear what it finds.
  bool isHeld() const { return held_; }

 private:
  Descriptor file_;
  bool held_ = false;
  bool first_ = true;
};

}  // namespace korvenal
