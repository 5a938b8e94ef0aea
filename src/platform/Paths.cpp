#include "platform/Paths.h"

#include <charconv>

#include "platform/Text.h"

namespace korvenal::Paths {

namespace {

char separatorOf(std::string_view path) {
  return isNative(path) ? NativeSeparator : DiscSeparator;
}

char upperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

bool isNative(std::string_view path) {
  return path.starts_with(NativeSeparator);
}

std::string_view doGetFilePart(std::string_view path) {
  const std::size_t at = path.rfind(separatorOf(path));
  return at == std::string_view::npos ? path : path.substr(at + 1);
}

std::string_view doGetFolderPart(std::string_view path) {
  const std::size_t at = path.rfind(separatorOf(path));
  if (at == std::string_view::npos) return path;
  return at == 0 && isNative(path) ? path.substr(0, 1) : path.substr(0, at);
}

std::string_view withoutEnd(std::string_view path) {
  while (path.size() > 1 && path.back() == separatorOf(path)) path.remove_suffix(1);
  return path;
}

std::string withEnd(std::string_view path) {
  std::string result(withoutEnd(path));
  if (result.empty() || result.back() != separatorOf(path)) result += separatorOf(path);
  return result;
}

std::optional<DrivePath> asDrivePath(std::string_view path) {
  if (path.size() < 2 || path[1] != ':') return std::nullopt;
  const char letter = upperLetter(path[0]);
  if (letter < 'A' || letter > 'Z') return std::nullopt;
  DrivePath onDrive{letter, {}, {}};
  path.remove_prefix(2);
  if (!path.empty() && path.front() != DiscSeparator) {
    std::uint32_t session = 0;
    const auto [end, error] = std::from_chars(path.data(), path.data() + path.size(), session);
    if (error != std::errc()) return std::nullopt;
    path.remove_prefix(static_cast<std::size_t>(end - path.data()));
    onDrive.session = session;
  }
  if (path.empty()) return onDrive;
  if (path.front() != DiscSeparator) return std::nullopt;
  onDrive.discPath = path.substr(1);
  return onDrive;
}

std::string onDrive(char letter, std::string_view discPath) {
  return std::string(1, letter) + ":\\" + std::string(discPath);
}

std::string onDrive(char letter, std::uint32_t session, std::string_view discPath) {
  return std::string(1, letter) + ":" + std::to_string(session) + "\\" + std::string(discPath);
}

bool isHoldable(std::string_view component) {
  if (component.empty()) return false;
  bool ascii = true;
  for (const char c : component) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F || c == DiscSeparator) return false;
    ascii = ascii && byte < 0x80;
  }
  if (ascii) return true;
  if (!Text::isUtf8(component)) return false;
  for (std::size_t i = 0; i + 1 < component.size(); ++i)
    if (static_cast<unsigned char>(component[i]) == 0xC2 &&
        static_cast<unsigned char>(component[i + 1]) < 0xA0)
      return false;
  return true;
}

}  // namespace korvenal::Paths
