#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/Files.h"
#include "platform/linux/DiscFiles.h"

/// What the implementations of the file ports share: the system's answers in the program's terms.
namespace korvenal::SystemFiles {

/// The fields that `infoOf` needs of statx.
inline constexpr unsigned InfoFields = STATX_TYPE | STATX_MODE | STATX_UID | STATX_GID |
                                       STATX_MTIME | STATX_CTIME | STATX_SIZE | STATX_INO;

/// `path` is the entry's name or its native path: the name tells a hidden one.
FileInfo infoOf(const struct statx& status, std::string_view path);
/// The entry `name` in an open folder, or a whole path with AT_FDCWD. `flags` as for statx. Kind
/// Missing on any failure.
FileInfo infoAt(int folder, const std::string& name, int flags);

/// True for a path that the system takes whole: absolute, and without a NUL.
bool isUsable(std::string_view path);

/// The outcome for an errno; success for 0.
FileOutcome outcomeOf(int error);
/// Writes all bytes, going on after interruptions. 0 or the errno.
int writeFully(int descriptor, const char* bytes, std::size_t size);

/// Opens a native path or one on a drive for reading; null when it is no readable file. Without
/// `discs` no drive path is.
std::unique_ptr<FileStream> openStream(const std::string& path, DiscFiles* discs);

}  // namespace korvenal::SystemFiles
