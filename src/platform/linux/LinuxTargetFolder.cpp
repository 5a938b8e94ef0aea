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

std::string asDiscPath(std::string_view native) {
  std::string path(native);
  std::replace(path.begin(), path.end(), '/', Paths::DiscSeparator);
  return path;
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

/// Some file systems hold neither rights nor dates; the content counts. Where no source tells
/// rights there are the usual ones; one that tells none at all means it.
void setDateAndRights(int file, const FileInfo& info, mode_t usual) {
  ::fchmod(file, info.kind != FileInfo::Kind::Missing ? info.permissions & 0777U : usual);
  const timespec times[2] = {{0, UTIME_OMIT}, {info.modified, info.modifiedNanoseconds}};
  ::futimens(file, times);
}

constexpr mode_t UsualFileRights = 0644, UsualFolderRights = 0700;

/// A joined file holds its folder open itself: it outlives the target folder that began it.
class LinuxJoinedFile : public JoinedFile {
 public:
  LinuxJoinedFile(Descriptor folder, std::string name, DiscFiles* discs)
      : folder_(std::move(folder)), name_(std::move(name)), discs_(discs) {}

  int folder() const { return folder_.get(); }
  PartFile& file() { return file_; }

  FileOutcome doAppendFileProgress(const std::string& source,
                                   const CopyProgress& progress) override {
    const auto stream = SystemFiles::openStream(source, discs_);
    if (!stream) return SystemFiles::outcomeOf(ENOENT);
    if (const int error = moveTo(size_); error != 0) return SystemFiles::outcomeOf(error);
    const FileOutcome copied = copy_.copy(*stream, file_.descriptor(), progress);
    if (copied) {
      size_ += stream->info().size.whole();
      look_ = stream->info();
    } else {
      moveTo(size_);
    }
    return copied;
  }
  FileOutcome finish() override {
    setDateAndRights(file_.descriptor(), look_, UsualFileRights);
    struct stat status {};
    int error = lookAtFile(folder_.get(), name_, status);
    // Pieces that came from earlier discs are on the medium by nothing else.
    if (error == 0 || error == ENOENT) error = ::fsync(file_.descriptor()) == 0 ? 0 : errno;
    if (error == 0) error = file_.finish(name_);
    file_.remove();
    return SystemFiles::outcomeOf(error);
  }
  void remove() override { file_.remove(); }
  std::string temporaryName() const override { return file_.name(); }

 private:
  /// Cuts what is behind the place off.
  int moveTo(std::int64_t place) {
    const int file = file_.descriptor();
    return ::ftruncate(file, place) == 0 && ::lseek(file, place, SEEK_SET) == place ? 0 : errno;
  }

  Descriptor folder_;
  std::string name_;
  DiscFiles* discs_;
  PartFile file_;
  PieceCopy copy_;
  std::int64_t size_ = 0;  ///< of the pieces that are whole
  FileInfo look_;
};

}  // namespace

LinuxTargetFolder::LinuxTargetFolder(Descriptor folder, DiscFiles* discs)
    : folder_(std::move(folder)), discs_(discs) {}

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
      if (::mkdirat(above, name.c_str(), 0700) == 0)
        made_.push_back(asDiscPath(parent.substr(0, end)));
      else if (errno != EEXIST)
        return errno;
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

/// What a folder is to be looked after for, the first time that a file is made in it.
void LinuxTargetFolder::noteFolder(int folder) {
  unsynced_ = true;
  struct stat status {};
  if (::fstat(folder, &status) != 0 || !noted_.insert({status.st_dev, status.st_ino}).second)
    return;
  Descriptor opened(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) PartFile::clearLeftovers(opened.get());
  for (const Medium& medium : mediums_)
    if (medium.device == status.st_dev) return;
  mediums_.push_back({status.st_dev, std::move(opened)});
}

int LinuxTargetFolder::beginFile(const Place& place, PartFile& file) {
  struct stat status {};
  const int error = lookAtFile(place.folder, place.name, status);
  if (error != 0 && error != ENOENT) return error;
  noteFolder(place.folder);
  return file.create(place.folder);
}

FileOutcome LinuxTargetFolder::doCopyFileProgress(const std::string& source,
                                                  const std::string& path,
                                                  const CopyProgress& progress) {
  const auto stream = SystemFiles::openStream(source, discs_);
  if (!stream) return SystemFiles::outcomeOf(ENOENT);
  const Place place = placeOf(path, Missing::Make);
  if (place.error != 0) return SystemFiles::outcomeOf(place.error);
  // Another path may be looked at while the copy yields.
  const Descriptor held = std::move(parent_);
  PartFile file;
  if (const int error = beginFile(place, file); error != 0) return SystemFiles::outcomeOf(error);
  FileOutcome outcome = copy_.copy(*stream, file.descriptor(), progress);
  if (outcome) {
    setDateAndRights(file.descriptor(), stream->info(), UsualFileRights);
    outcome = SystemFiles::outcomeOf(file.finish(place.name));
  }
  file.remove();
  return outcome;
}

std::unique_ptr<JoinedFile> LinuxTargetFolder::doBeginJoinedFile(const std::string& path,
                                                                 FileOutcome& outcome) {
  const Place place = placeOf(path, Missing::Make);
  outcome = SystemFiles::outcomeOf(place.error);
  if (!outcome) return nullptr;
  Descriptor held(::fcntl(place.folder, F_DUPFD_CLOEXEC, 0));
  auto joined = std::make_unique<LinuxJoinedFile>(std::move(held), place.name, discs_);
  outcome = SystemFiles::outcomeOf(beginFile({joined->folder(), place.name, 0}, joined->file()));
  if (!outcome) return nullptr;
  return joined;
}

FileOutcome LinuxTargetFolder::doSync() {
  if (!std::exchange(unsynced_, false)) return {};
  int error = 0;
  for (const Medium& medium : mediums_) {
    if (!medium.folder)
      ::sync();
    else if (::syncfs(medium.folder.get()) != 0)
      error = errno;
  }
  return SystemFiles::outcomeOf(error);
}

FileOutcome LinuxTargetFolder::doTestWriting() {
  PartFile file;
  const int error = file.create(folder_.get());
  file.remove();
  return SystemFiles::outcomeOf(error);
}

std::vector<std::string> LinuxTargetFolder::takeMadeFolders() {
  return std::exchange(made_, {});
}

void LinuxTargetFolder::doDressFolder(const std::string& path, const FileInfo& look) {
  const Place place = placeOf(path, Missing::Fail);
  if (place.error != 0) return;
  const Descriptor folder(
      ::openat(place.folder, place.name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!folder) return;
  // Whoever may not do this keeps what belongs to them.
  if (::geteuid() == 0 && ::fchown(folder.get(), look.owner, look.group) != 0 && errno != EPERM)
    return;
  setDateAndRights(folder.get(), look, UsualFolderRights);
}

std::unique_ptr<TargetFolder> LinuxTargetFolders::open(const std::string& path) {
  if (!SystemFiles::isUsable(path)) return nullptr;
  Descriptor folder(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  return folder ? std::make_unique<LinuxTargetFolder>(std::move(folder), discs_) : nullptr;
}

}  // namespace korvenal
