#include "platform/linux/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace korvenal {

InstanceLock::InstanceLock(const std::string& applicationFolder)
    : file_(
          open((applicationFolder + "KORVEN2.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
  held_ = file_.get() >= 0 && flock(file_.get(), LOCK_EX | LOCK_NB) == 0;
  // A folder that takes no lock file, or knows no locks, has no other way to tell.
  first_ = held_ || file_.get() < 0 || errno != EWOULDBLOCK;
}

}  // namespace korvenal
