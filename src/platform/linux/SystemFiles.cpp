#include "platform/linux/SystemFiles.h"

#include <fcntl.h>
#include <linux/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/Paths.h"
#include "platform/linux/Descriptor.h"

namespace korvenal::SystemFiles {

namespace {

class NativeStream : public FileStream {
 public:
  NativeStream(Descriptor file, FileInfo info) : file_(std::move(file)), info_(info) {}

  const FileInfo& info() const override { return info_; }

  std::int64_t read(std::int64_t offset, char* buffer, std::size_t bytes) override {
    std::size_t done = 0;
    while (done < bytes) {
      const ssize_t got = ::pread(file_.get(), buffer + done, bytes - done,
                                  offset + static_cast<std::int64_t>(done));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) return -errno;
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(done);
  }

 private:
  Descriptor file_;
  FileInfo info_;
};

FileInfo::Kind kindOf(unsigned mode) {
  if (S_ISREG(mode)) return FileInfo::Kind::File;
  return S_ISDIR(mode) ? FileInfo::Kind::Folder : FileInfo::Kind::Other;
}

}  // namespace

FileInfo infoOf(const struct statx& status, std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  FileInfo info;
  info.kind = kindOf(status.stx_mode);
  if (info.kind == FileInfo::Kind::File)
    info.size = Fixed4(static_cast<std::int64_t>(status.stx_size));
  info.modified = status.stx_mtime.tv_sec;
  info.modifiedNanoseconds = status.stx_mtime.tv_nsec;
  info.changed = status.stx_ctime.tv_sec;
  info.changedNanoseconds = status.stx_ctime.tv_nsec;
  info.inode = status.stx_ino;
  info.permissions = status.stx_mode & 0777U;
  info.owner = status.stx_uid;
  info.group = status.stx_gid;
  if ((status.stx_mode & 0222U) == 0) info.attributes |= AttributeReadOnly;
  if (name.starts_with('.')) info.attributes |= AttributeHidden;
  if ((status.stx_attributes & STATX_ATTR_IMMUTABLE) != 0) info.attributes |= AttributeSystem;
  if ((status.stx_attributes & STATX_ATTR_COMPRESSED) != 0) info.attributes |= AttributeCompressed;
  if (info.kind == FileInfo::Kind::Folder) info.attributes |= AttributeFolder;
  if (info.kind == FileInfo::Kind::Other) info.attributes |= AttributeDevice;
  return info;
}

FileInfo infoAt(int folder, const std::string& name, int flags) {
  struct statx status {};
  if (::statx(folder, name.c_str(), flags | AT_NO_AUTOMOUNT, InfoFields, &status) != 0) return {};
  return infoOf(status, name);
}

bool isUsable(std::string_view path) {
  return Paths::isNative(path) && path.find('\0') == std::string_view::npos;
}

FileOutcome outcomeOf(int error) {
  if (error == 0) return {};
  const std::string text = std::system_category().message(error);
  if (error == ENOSPC || error == EDQUOT) return {FileOutcome::DiskFull, text};
  // The system's own number for this one is that of a full disk here.
  static_assert(ENOTEMPTY == FileOutcome::DiskFull);
  return {error == ENOTEMPTY ? EEXIST : error, text};
}

int writeFully(int descriptor, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(descriptor, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return 0;
}

std::unique_ptr<FileStream> openStream(const std::string& path, DiscFiles* discs) {
  if (const auto onDrive = Paths::asDrivePath(path))
    return discs != nullptr ? discs->open(*onDrive, onDrive->discPath) : nullptr;
  if (!isUsable(path)) return nullptr;
  // Not to wait for the other end of a pipe.
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) return nullptr;
  struct statx status {};
  if (::statx(file.get(), "", AT_EMPTY_PATH, InfoFields, &status) != 0) return nullptr;
  const FileInfo info = infoOf(status, path);
  if (info.kind != FileInfo::Kind::File) return nullptr;
  return std::make_unique<NativeStream>(std::move(file), info);
}

}  // namespace korvenal::SystemFiles
