#include "platform/linux/LinuxFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>

#include "platform/Paths.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

constexpr long UdfMagic = 0x15013346;

class NativeWriter : public FileWriter {
 public:
  explicit NativeWriter(Descriptor file) : file_(std::move(file)) {}

  /// Waits until what was written stands on the medium.
  void flush() {
    if (error_ == 0 && ::fsync(file_.get()) != 0) error_ = errno;
  }

  bool write(std::string_view bytes) override {
    if (error_ == 0) error_ = SystemFiles::writeFully(file_.get(), bytes.data(), bytes.size());
    return error_ == 0;
  }

  FileOutcome finish() override {
    // Some file systems report a failed write only here.
    if (::close(file_.release()) != 0 && error_ == 0) error_ = errno;
    return SystemFiles::outcomeOf(error_);
  }

 private:
  Descriptor file_;
  int error_ = 0;
};

/// Where a link at the path leads, so that a rename replaces the file and not the link.
std::string withoutLinks(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), ::free);
  return real ? std::string(real.get()) : path;
}

/// The highest folder above the path that lies on the same volume.
std::string mountPointOf(const std::string& path) {
  std::string point = withoutLinks(path);
  struct stat own {
  }, above{};
  if (::stat(point.c_str(), &own) != 0) return {};
  while (point.size() > 1) {
    const std::string parent = point.substr(0, std::max<std::size_t>(point.rfind('/'), 1));
    if (::stat(parent.c_str(), &above) != 0 || above.st_dev != own.st_dev) break;
    point = parent;
  }
  return point;
}

void flushFolder(const std::string& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) ::fsync(opened.get());
}

const std::string TemporaryHead = ".korvenal-";

/// The process that made a temporary file of this name; 0 for any other name.
pid_t makerOf(std::string_view name) {
  if (!name.starts_with(TemporaryHead)) return 0;
  name.remove_prefix(TemporaryHead.size());
  pid_t process = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
  return error == std::errc() && process > 0 && end != name.data() + name.size() && *end == '-'
             ? process
             : 0;
}

bool isGone(pid_t process) {
  return ::kill(process, 0) != 0 && errno == ESRCH;
}

/// A new file in the folder under a name that no other process uses.
Descriptor openTemporary(const std::string& folder, std::string& path, mode_t mode) {
  for (int number = 0; number < 100; ++number) {
    path = folder + "/" + TemporaryHead + std::to_string(::getpid()) + "-" + std::to_string(number);
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file || errno != EEXIST) return file;
  }
  return {};
}

FileOutcome fillAndRename(Descriptor file, const std::string& temporary, const std::string& target,
                          std::string_view content) {
  struct stat old {};
  if (::stat(target.c_str(), &old) == 0 && ::fchmod(file.get(), old.st_mode & 0777U) != 0)
    return SystemFiles::outcomeOf(errno);
  NativeWriter writer(std::move(file));
  writer.write(content);
  writer.flush();
  const FileOutcome written = writer.finish();
  if (!written) return written;
  return SystemFiles::outcomeOf(::rename(temporary.c_str(), target.c_str()) == 0 ? 0 : errno);
}

}  // namespace

FileInfo LinuxFiles::doGetInfo(const std::string& path) const {
  if (const auto onDrive = Paths::asDrivePath(path))
    return discs_ != nullptr ? discs_->doGetInfo(*onDrive, onDrive->discPath) : FileInfo();
  return SystemFiles::isUsable(path) ? SystemFiles::infoAt(AT_FDCWD, path, 0) : FileInfo();
}

std::optional<VolumeInfo> LinuxFiles::doGetVolumeInfo(const std::string& path) const {
  if (const auto onDrive = Paths::asDrivePath(path))
    return discs_ != nullptr ? discs_->doGetVolumeInfo(onDrive->letter) : std::nullopt;
  struct statfs volume {};
  if (!SystemFiles::isUsable(path) || ::statfs(path.c_str(), &volume) != 0) return std::nullopt;
  VolumeInfo info;
  if (volume.f_type == ISOFS_SUPER_MAGIC) info.fileSystem = "CDFS";
  if (volume.f_type == UdfMagic) info.fileSystem = "UDF";
  const auto bytes = [&](std::uint64_t blocks) {
    const auto size = static_cast<std::uint64_t>(volume.f_bsize);
    const std::uint64_t most =
        static_cast<std::uint64_t>(Fixed4::MaxWhole) / std::max<std::uint64_t>(size, 1);
    return Fixed4(static_cast<std::int64_t>(std::min(blocks, most) * size));
  };
  info.totalBytes = bytes(volume.f_blocks);
  info.freeBytes = bytes(volume.f_bavail);
  info.mountPoint = mountPointOf(path);
  return info;
}

std::vector<DiscSession> LinuxFiles::discSessions(const std::string& path) const {
  const auto onDrive = Paths::asDrivePath(path);
  return onDrive && discs_ != nullptr ? discs_->sessions(onDrive->letter)
                                      : std::vector<DiscSession>();
}

std::optional<std::string> LinuxFiles::readAll(const std::string& path,
                                               std::int64_t maxBytes) const {
  const auto stream = SystemFiles::openStream(path, discs_);
  if (!stream || stream->info().size > Fixed4(maxBytes)) return std::nullopt;
  // The size is a hint: a file may grow while it is read, and some files have none.
  std::string content;
  std::int64_t piece = std::min(stream->info().size.whole() + 1, FileView::PieceBytes);
  for (;;) {
    const std::size_t done = content.size();
    content.resize(done + static_cast<std::size_t>(piece));
    const std::int64_t got = stream->read(static_cast<std::int64_t>(done), content.data() + done,
                                          static_cast<std::size_t>(piece));
    if (got < 0) return std::nullopt;
    content.resize(done + static_cast<std::size_t>(got));
    if (static_cast<std::int64_t>(content.size()) > maxBytes) return std::nullopt;
    if (got < piece) return content;
    piece = FileView::PieceBytes;
  }
}

std::optional<std::string> LinuxFiles::readPart(const std::string& path, std::int64_t offset,
                                                std::int64_t bytes) const {
  const auto stream = SystemFiles::openStream(path, discs_);
  if (!stream || offset < 0 || bytes < 0) return std::nullopt;
  const std::int64_t left = std::max<std::int64_t>(stream->info().size.whole() - offset, 0);
  std::string part(static_cast<std::size_t>(std::min(bytes, left)), '\0');
  const std::int64_t got = stream->read(offset, part.data(), part.size());
  if (got < 0) return std::nullopt;
  part.resize(static_cast<std::size_t>(got));
  return part;
}

std::vector<std::string> LinuxFiles::listFolder(const std::string& path) const {
  if (const auto onDrive = Paths::asDrivePath(path))
    return discs_ != nullptr ? discs_->listFolder(*onDrive, onDrive->discPath)
                             : std::vector<std::string>();
  std::vector<std::string> names;
  if (!SystemFiles::isUsable(path)) return names;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
  if (!folder) return names;
  while (const dirent* entry = ::readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool LinuxFiles::doDeleteFile(const std::string& path) {
  return SystemFiles::isUsable(path) && (::unlink(path.c_str()) == 0 || errno == ENOENT);
}

bool LinuxFiles::doCreateFolderPath(const std::string& path) {
  if (!SystemFiles::isUsable(path)) return false;
  for (std::size_t end = 1; end != std::string::npos;) {
    end = path.find('/', end + 1);
    // What cannot be made shows below; most levels are there already.
    ::mkdir(path.substr(0, end).c_str(), 0700);
  }
  return doFolderExists(path);
}

bool LinuxFiles::doRename(const std::string& from, const std::string& to) {
  return SystemFiles::isUsable(from) && SystemFiles::isUsable(to) &&
         ::rename(from.c_str(), to.c_str()) == 0;
}

void LinuxFiles::doClearReadOnly(const std::string& path) {
  const FileInfo info = Paths::isNative(path) ? doGetInfo(path) : FileInfo();
  if (info.kind == FileInfo::Kind::File) ::chmod(path.c_str(), info.permissions | S_IWUSR);
}

std::unique_ptr<FileWriter> LinuxFiles::doCreateFile(const std::string& path) {
  // Always a new file, so that nobody else holds it open and no link is followed.
  if (!doDeleteFile(path)) return nullptr;
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  return file ? std::make_unique<NativeWriter>(std::move(file)) : nullptr;
}

FileOutcome LinuxFiles::writeAll(const std::string& path, std::string_view content) {
  if (!SystemFiles::isUsable(path)) return SystemFiles::outcomeOf(EINVAL);
  const std::string target = withoutLinks(path);
  const std::string folder(Paths::doGetFolderPart(target));
  std::string temporary;
  const bool isPrivate = !privateFolder_.empty() && path.starts_with(privateFolder_);
  Descriptor file = openTemporary(folder, temporary, isPrivate ? 0600 : 0666);
  if (!file) return SystemFiles::outcomeOf(errno);
  const FileOutcome outcome = fillAndRename(std::move(file), temporary, target, content);
  if (outcome)
    flushFolder(folder);
  else
    ::unlink(temporary.c_str());
  return outcome;
}

void LinuxFiles::doDeleteTemporaries(const std::string& folder) {
  if (!Paths::isNative(folder)) return;
  for (const std::string& name : listFolder(folder)) {
    const pid_t maker = makerOf(name);
    if (maker != 0 && isGone(maker)) doDeleteFile(Paths::withEnd(folder) + name);
  }
}

}  // namespace korvenal
