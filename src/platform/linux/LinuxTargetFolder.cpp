#include "platform/linux/LinuxTargetFolder.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/Paths.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

constexpr int FolderFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
/// Not to wait for the other end, should a pipe have been put in a file's place.
constexpr int FileFlags = O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool isSafe(std::string_view component) {
  return !component.empty() && component != "." && component != ".." &&
         component.find('/') == std::string_view::npos &&
         component.find('\0') == std::string_view::npos;
}

/// True for a path that names something below the folder. All of it is looked at before a first
/// folder is made for it.
bool isSafePath(std::string_view path) {
  for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
    end = path.find(Paths::DiscSeparator, begin);
    const std::size_t length = end == std::string_view::npos ? end : end - begin;
    if (!isSafe(path.substr(begin, length))) return false;
  }
  return true;
}

/// Opens a folder at a relative native path without following a link on the way. Without one, errno
/// tells why.
Descriptor openBelow(int folder, const std::string& path) {
  struct open_how how {};
  how.flags = FolderFlags;
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
  return Descriptor(
      static_cast<int>(::syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
}

/// Why an entry that is no regular file is left alone; 0 for a regular file.
int refusalOf(mode_t mode) {
  if (S_ISREG(mode)) return 0;
  if (S_ISLNK(mode)) return ELOOP;
  return S_ISDIR(mode) ? EISDIR : EPERM;
}

/// 0 for a regular file, which is described in `status`.
int lookAtFile(int folder, const std::string& name, struct stat& status) {
  if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return errno;
  return refusalOf(status.st_mode);
}

/// Opens a regular file; what else has come to stand there is refused.
int openFile(int folder, const std::string& name, int flags, Descriptor& file,
             struct stat& status) {
  file.reset(::openat(folder, name.c_str(), flags | FileFlags));
  if (!file || ::fstat(file.get(), &status) != 0) return errno;
  return refusalOf(status.st_mode);
}

int createFile(int folder, const std::string& name, Descriptor& file) {
  file.reset(::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | FileFlags, 0600));
  return file ? 0 : errno;
}

/// Empties the file for a new content. A file that cannot be written, or has a second name, which
/// may lie outside the target, is replaced by a new one.
int recreateFile(int folder, const std::string& name, Descriptor& file) {
  struct stat status {};
  if (const int error = lookAtFile(folder, name, status); error != 0) return error;
  if (status.st_nlink == 1) {
    const int error = openFile(folder, name, O_WRONLY, file, status);
    if (error == 0 && status.st_nlink == 1) return ::ftruncate(file.get(), 0) == 0 ? 0 : errno;
    if (error != 0 && error != EACCES) return error;
  }
  if (::unlinkat(folder, name.c_str(), 0) != 0) return errno;
  return createFile(folder, name, file);
}

void setDate(int file, UnixTime seconds, std::int64_t nanoseconds) {
  const timespec times[2] = {{0, UTIME_OMIT}, {seconds, nanoseconds}};
  ::futimens(file, times);
}

/// Some file systems hold neither rights nor dates; the content counts.
void setDateAndRights(int file, const FileInfo& info) {
  // A disc that tells no rights gives those of any new file.
  ::fchmod(file, info.permissions != 0 ? info.permissions & 0777U : 0644U);
  setDate(file, info.modified, info.modifiedNanoseconds);
}

int closeOf(Descriptor& file) {
  return ::close(file.release()) == 0 ? 0 : errno;
}

}  // namespace

LinuxTargetFolder::LinuxTargetFolder(Descriptor folder, DiscFiles* discs)
    : folder_(std::move(folder)),
      discs_(discs),
      buffer_(static_cast<std::size_t>(FileView::PieceBytes)) {}

LinuxTargetFolder::Place LinuxTargetFolder::placeOf(std::string_view path, Missing missing) const {
  if (path.ends_with(Paths::DiscSeparator)) path.remove_suffix(1);
  const std::size_t at = path.rfind(Paths::DiscSeparator);
  const bool hasParent = at != std::string_view::npos;
  Place place;
  place.name = path.substr(hasParent ? at + 1 : 0);
  if (!isSafePath(path)) return {-1, {}, EINVAL};
  if (hasParent) place.error = enterParent(path.substr(0, at), missing);
  place.folder = hasParent ? parent_.get() : folder_.get();
  return place;
}

int LinuxTargetFolder::enterParent(std::string_view parent, Missing missing) const {
  std::string native(parent);
  std::replace(native.begin(), native.end(), Paths::DiscSeparator, '/');
  parent_ = openBelow(folder_.get(), native);
  if (parent_) return 0;
  // Step by step what has to be made, and what the system does not take in one.
  const bool incomplete = errno == ENOENT && missing == Missing::Make;
  return incomplete || errno == ENOSYS || errno == ENAMETOOLONG ? walkTo(native, missing) : errno;
}

int LinuxTargetFolder::walkTo(std::string_view parent, Missing missing) const {
  Descriptor reached;
  for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
    end = parent.find('/', begin);
    const std::string name(parent.substr(begin, end == std::string_view::npos ? end : end - begin));
    const int above = reached ? reached.get() : folder_.get();
    Descriptor next(::openat(above, name.c_str(), FolderFlags));
    if (!next && errno == ENOENT && missing == Missing::Make) {
      if (::mkdirat(above, name.c_str(), 0777) != 0 && errno != EEXIST) return errno;
      next.reset(::openat(above, name.c_str(), FolderFlags));
    }
    if (!next) return errno;
    reached = std::move(next);
  }
  parent_ = std::move(reached);
  return 0;
}

FileInfo LinuxTargetFolder::doGetInfo(const std::string& path) const {
  if (path.empty()) return SystemFiles::infoAt(folder_.get(), ".", 0);
  const Place place = placeOf(path, Missing::Fail);
  return place.error == 0 ? SystemFiles::infoAt(place.folder, place.name, AT_SYMLINK_NOFOLLOW)
                          : FileInfo();
}

bool LinuxTargetFolder::isInUse(const std::string& path) const {
  const Place place = placeOf(path, Missing::Fail);
  struct stat status {};
  Descriptor file;
  if (place.error != 0 || lookAtFile(place.folder, place.name, status) != 0 ||
      openFile(place.folder, place.name, O_RDONLY, file, status) != 0)
    return false;
  // The system grants a lease for reading only while nobody has the file open for writing. It ends
  // with the descriptor.
  if (::fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN) return true;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  if (::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK) return true;
  return ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

FileOutcome LinuxTargetFolder::doCreateFolderPath(const std::string& path) {
  std::string_view folder = path;
  if (folder.ends_with(Paths::DiscSeparator)) folder.remove_suffix(1);
  if (folder.empty()) return {};
  return SystemFiles::outcomeOf(isSafePath(folder) ? enterParent(folder, Missing::Make) : EINVAL);
}

FileOutcome LinuxTargetFolder::doDeleteFile(const std::string& path) {
  const Place place = placeOf(path, Missing::Fail);
  struct stat status {};
  int error = place.error != 0 ? place.error : lookAtFile(place.folder, place.name, status);
  if (error == 0 && ::unlinkat(place.folder, place.name.c_str(), 0) != 0) error = errno;
  return SystemFiles::outcomeOf(error == ENOENT ? 0 : error);
}

int LinuxTargetFolder::openForCopy(const std::string& path, Descriptor& target) {
  const Place place = placeOf(path, Missing::Make);
  if (place.error != 0) return place.error;
  const int error = createFile(place.folder, place.name, target);
  return error == EEXIST ? recreateFile(place.folder, place.name, target) : error;
}

int LinuxTargetFolder::openForAppend(const std::string& path, Descriptor& target) {
  const Place place = placeOf(path, Missing::Make);
  if (place.error != 0) return place.error;
  int error = createFile(place.folder, place.name, target);
  struct stat status {};
  if (error == EEXIST) error = lookAtFile(place.folder, place.name, status);
  if (error == 0 && !target) error = openFile(place.folder, place.name, O_WRONLY, target, status);
  // Not by O_APPEND, which rules out copies within the system.
  if (error == 0 && ::lseek(target.get(), 0, SEEK_END) < 0) error = errno;
  // Its second name may lie outside the target.
  return error == 0 && status.st_nlink > 1 ? EMLINK : error;
}

int LinuxTargetFolder::copyPiece(FileStream& source, int target, std::int64_t offset,
                                 std::int64_t bytes) {
  const std::int64_t sent = source.copyTo(target, offset, static_cast<std::size_t>(bytes));
  if (sent < 0) return static_cast<int>(-sent);
  const std::int64_t rest = bytes - sent;
  if (rest == 0) return 0;
  const std::int64_t got =
      source.read(offset + sent, buffer_.data(), static_cast<std::size_t>(rest));
  // Fewer bytes than the disc promised are no success.
  if (got != rest) return got < 0 ? static_cast<int>(-got) : EIO;
  return SystemFiles::writeFully(target, buffer_.data(), static_cast<std::size_t>(got));
}

FileOutcome LinuxTargetFolder::copyContent(FileStream& source, int target,
                                           const CopyProgress& progress) {
  const std::int64_t size = source.info().size.whole();
  for (std::int64_t done = 0; done < size;) {
    const auto wanted = std::min(size - done, FileView::PieceBytes);
    const int error = copyPiece(source, target, done, wanted);
    if (error != 0) return SystemFiles::outcomeOf(error);
    done += wanted;
    if (wanted == FileView::PieceBytes && progress && progress(done / FileView::PieceBytes))
      return {FileOutcome::Stopped, {}};
  }
  return {};
}

FileOutcome LinuxTargetFolder::doCopyFileProgress(const std::string& source,
                                                  const std::string& path,
                                                  const CopyProgress& progress) {
  const auto stream = SystemFiles::openStream(source, discs_);
  if (!stream) return SystemFiles::outcomeOf(ENOENT);
  Descriptor target;
  if (const int error = openForCopy(path, target); error != 0) return SystemFiles::outcomeOf(error);
  const FileOutcome copied = copyContent(*stream, target.get(), progress);
  if (!copied) {
    setDate(target.get(), 0, 0);
    return copied;
  }
  setDateAndRights(target.get(), stream->info());
  return SystemFiles::outcomeOf(closeOf(target));
}

FileOutcome LinuxTargetFolder::doAppendFileProgress(const std::string& source,
                                                    const std::string& path,
                                                    const CopyProgress& progress) {
  const auto stream = SystemFiles::openStream(source, discs_);
  if (!stream) return SystemFiles::outcomeOf(ENOENT);
  Descriptor target;
  if (const int error = openForAppend(path, target); error != 0)
    return SystemFiles::outcomeOf(error);
  const FileOutcome copied = copyContent(*stream, target.get(), progress);
  if (copied) return SystemFiles::outcomeOf(closeOf(target));
  setDate(target.get(), 0, 0);
  return copied;
}

std::unique_ptr<TargetFolder> LinuxTargetFolders::open(const std::string& path) {
  if (!SystemFiles::isUsable(path)) return nullptr;
  Descriptor folder(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  return folder ? std::make_unique<LinuxTargetFolder>(std::move(folder), discs_) : nullptr;
}

}  // namespace korvenal
