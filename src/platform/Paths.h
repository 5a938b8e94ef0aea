#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Three kinds of paths meet here:
/// - native paths of sources and targets: "/home/ann/Photos", reported folders end in '/';
/// - disc paths: relative to the disc's root, '\' between components, folders end in '\';
/// - drive paths: a letter, ':', '\' and a disc path: "V:\Photos\a.jpg" in the newest tree of the
///   disc; "V:32\Photos\a.jpg" in that of the session whose first block is 32.
namespace korvenal::Paths {

inline constexpr char NativeSeparator = '/';
inline constexpr char DiscSeparator = '\\';

/// A native path begins with '/'; every other path is one of discs or drives.
bool isNative(std::string_view path);

/// The text behind the last separator of the path's own kind; all of it when there is none.
std::string_view doGetFilePart(std::string_view path);
/// The text before the last separator of the path's own kind; all of it when there is none.
/// The folder part of "/x" is "/".
std::string_view doGetFolderPart(std::string_view path);

/// Without separators of the path's own kind at the end (at least one character stays).
std::string_view withoutEnd(std::string_view path);
/// With exactly one separator of the path's own kind at the end.
std::string withEnd(std::string_view path);

/// A path on a drive, taken apart.
struct DrivePath {
  char letter = 0;                       ///< 'A' to 'Z'
  std::optional<std::uint32_t> session;  ///< its first block; nothing for the newest tree
  std::string_view discPath;             ///< no leading '\'; empty for the root
};
/// Parses "V:", "V:\", "V:\a\b" and "V:32\a\b"; nothing for any other text.
std::optional<DrivePath> asDrivePath(std::string_view path);
/// "V:\" and the disc path.
std::string onDrive(char letter, std::string_view discPath);
/// "V:32\" and the disc path.
std::string onDrive(char letter, std::uint32_t session, std::string_view discPath);

/// True when a disc and the index can hold this component: it is not empty, is UTF-8 and has no
/// '\' and no control character.
bool isHoldable(std::string_view component);

}  // namespace korvenal::Paths
