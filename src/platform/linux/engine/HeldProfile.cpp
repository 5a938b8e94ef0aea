#include "platform/linux/engine/HeldProfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/Paths.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

/// A name that the program clears after a crash, and that no other process uses.
std::string nameOfRoom(const std::string& profileFile) {
  return Paths::withEnd(Paths::doGetFolderPart(profileFile)) + ".korvenal-" +
         std::to_string(::getpid()) + "-" +
         std::string(Paths::doGetFilePart(profileFile)).substr(0, 64);
}

}  // namespace

int HeldProfile::hold(const std::string& profileFile, std::size_t bytes) {
  drop();
  profileFile_ = profileFile;
  path_ = nameOfRoom(profileFile);
  ::unlink(path_.c_str());
  constexpr mode_t Private = 0600;
  file_.reset(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, Private));
  if (!file_) {
    path_.clear();
    return errno;
  }
  struct stat old {};
  if (::stat(profileFile.c_str(), &old) == 0) ::fchmod(file_.get(), old.st_mode & 0777U);
  const int error = ::posix_fallocate(file_.get(), 0, static_cast<off_t>(bytes));
  if (error != 0) drop();
  return error;
}

int HeldProfile::store(std::string_view text) {
  if (!file_) return ENOENT;
  const auto failed = [this] {
    const int error = errno;
    drop();
    return error;
  };
  if (const int error = SystemFiles::writeFully(file_.get(), text.data(), text.size());
      error != 0) {
    drop();
    return error;
  }
  if (::ftruncate(file_.get(), static_cast<off_t>(text.size())) != 0 || ::fsync(file_.get()) != 0 ||
      ::rename(path_.c_str(), profileFile_.c_str()) != 0)
    return failed();
  path_.clear();
  file_.reset();
  const Descriptor folder(::open(std::string(Paths::doGetFolderPart(profileFile_)).c_str(),
                                 O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.get());
  return 0;
}

void HeldProfile::drop() {
  if (!path_.empty()) ::unlink(path_.c_str());
  path_.clear();
  file_.reset();
}

}  // namespace korvenal
