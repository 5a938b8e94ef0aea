#include "platform/linux/PartFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

namespace korvenal {

namespace {

constexpr std::string_view PartHead = ".korvenal-";
constexpr std::string_view PartTail = ".part";
constexpr std::size_t PartDigits = 16;

/// Of one length whatever the file will be called, so that a name as long as the system takes has a
/// temporary one too.
std::string drawPartName() {
  static std::uint64_t fallback = 0;
  std::uint64_t number = 0;
  if (::getrandom(&number, sizeof number, GRND_NONBLOCK) != sizeof number) number = ++fallback;
  char digits[PartDigits + 1];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(number));
  return std::string(PartHead) + digits + std::string(PartTail);
}

bool isPartName(std::string_view name) {
  if (name.size() != PartHead.size() + PartDigits + PartTail.size() ||
      !name.starts_with(PartHead) || !name.ends_with(PartTail))
    return false;
  return name.substr(PartHead.size(), PartDigits).find_first_not_of("0123456789abcdef") ==
         std::string_view::npos;
}

/// True when the file was left by a process that is gone. Where nothing can be locked nobody knows.
bool isLeftover(int folder, const char* name) {
  const Descriptor file(
      ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  return file && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::flock(file.get(), LOCK_EX | LOCK_NB) == 0;
}

/// What closing the file would tell: some file systems report a failed write only then.
int errorOfClosing(int file) {
  const int copy = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
  return copy >= 0 && ::close(copy) == 0 ? 0 : errno;
}

}  // namespace

/// Between making and locking a file another restore may take it for a leftover.
bool PartFile::isOurs() const {
  if (::flock(file_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  struct stat status {};
  return ::fstat(file_.get(), &status) == 0 && status.st_nlink > 0;
}

int PartFile::create(int folder) {
  constexpr int Tries = 100;
  folder_ = folder;
  for (int i = 0; i < Tries; ++i) {
    name_ = drawPartName();
    file_.reset(::openat(folder, name_.c_str(),
                         O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (file_ && isOurs()) return 0;
    if (!file_ && errno != EEXIST) break;
  }
  const int error = file_ ? EAGAIN : errno;
  file_.reset();
  name_.clear();
  return error;
}

int PartFile::finish(const std::string& name) {
  int error = errorOfClosing(file_.get());
  if (error != 0) return error;
  if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) {
    error = errno;
    // These may come of a file system that moves no open file, or moves none over another.
    if (error != EEXIST && error != EPERM && error != EACCES && error != EBUSY && error != ETXTBSY)
      return error;
    error = replaceAfterClosing(name);
  }
  if (error != 0) return error;
  file_.reset();
  name_.clear();
  return 0;
}

int PartFile::replaceAfterClosing(const std::string& name) {
  file_.reset();
  if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0) return 0;
  if (errno != EEXIST) return errno;
  if (::unlinkat(folder_, name.c_str(), 0) != 0) return errno;
  if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0) return 0;
  // The only copy that is left.
  name_.clear();
  return errno;
}

void PartFile::remove() {
  if (!name_.empty()) ::unlinkat(folder_, name_.c_str(), 0);
  name_.clear();
  file_.reset();
}

void PartFile::clearLeftovers(int folder) {
  // Read through a descriptor of its own: where it stands is nobody else's business.
  Descriptor listed(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(listed ? ::fdopendir(listed.get()) : nullptr,
                                                    &::closedir);
  if (!entries) return;
  listed.release();
  while (const dirent* entry = ::readdir(entries.get()))
    if (isPartName(entry->d_name) && isLeftover(folder, entry->d_name))
      ::unlinkat(folder, entry->d_name, 0);
}

}  // namespace korvenal
