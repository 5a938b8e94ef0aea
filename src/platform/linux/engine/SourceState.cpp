#include "platform/linux/engine/SourceState.h"

#include <fcntl.h>

#include <cerrno>

namespace korvenal {

SourceState SourceState::of(const struct stat& status) {
  SourceState state;
  state.size = status.st_size;
  state.modified = {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
  state.changed = {status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
  state.inode = status.st_ino;
  state.keeping = {status.st_mode, status.st_uid, status.st_gid, status.st_nlink};
  return state;
}

FileInfo SourceState::toInfo() const {
  FileInfo info;
  info.kind = FileInfo::Kind::File;
  info.size = Fixed4(size);
  info.modified = modified.seconds;
  info.modifiedNanoseconds = modified.nanoseconds;
  info.changed = changed.seconds;
  info.changedNanoseconds = changed.nanoseconds;
  info.inode = inode;
  info.permissions = keeping.mode & 0777U;
  return info;
}

Descriptor openSourceFile(const std::string& path, SourceState& state, int& error) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) {
    error = errno;
    return {};
  }
  if (!S_ISREG(status.st_mode)) {
    error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return {};
  }
  state = SourceState::of(status);
  return file;
}

}  // namespace korvenal
