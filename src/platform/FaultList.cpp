#include "platform/FaultList.h"

#include <algorithm>
#include <charconv>

#include "platform/Text.h"

namespace korvenal::FaultList {

namespace {

constexpr std::string_view FormatName = "KORVEN-UNSAVED-1";
constexpr std::string_view NamePrefix = "_KORVEN{";
constexpr std::string_view NothingLost = "All files of this session were saved.\n";
constexpr std::string_view OthersSaved =
    "The places of these files hold no data of theirs. All other files were saved.\n";
constexpr std::size_t PaddingLine = 64;

bool isLine(const std::string& path) {
  return !path.empty() && std::none_of(path.begin(), path.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

/// The text up to the next line feed, which is taken away with it; nothing when there is none.
std::optional<std::string_view> takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return line;
}

/// The number of paths that the first line promises; nothing when it is no such line.
std::optional<std::size_t> countIn(std::string_view line) {
  if (!line.starts_with(FormatName)) return std::nullopt;
  line.remove_prefix(FormatName.size());
  if (!line.starts_with('\t')) return std::nullopt;
  line.remove_prefix(1);
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), count);
  if (error != std::errc() || end != line.data() + line.size()) return std::nullopt;
  return count;
}

}  // namespace

std::string nameBeside(std::string_view indexName) {
  const std::size_t dot = indexName.rfind('.');
  return std::string(indexName.substr(0, dot)).append(Extension);
}

bool isName(std::string_view fileName) {
  return fileName.starts_with(NamePrefix) && fileName.ends_with(Extension);
}

std::optional<std::string> format(const std::vector<std::string>& discPaths, std::int64_t bytes) {
  if (bytes < 0 || !std::all_of(discPaths.begin(), discPaths.end(), isLine)) return std::nullopt;
  std::string text(FormatName);
  text += '\t' + std::to_string(discPaths.size()) + '\n';
  for (const std::string& path : discPaths) text.append(path) += '\n';
  text += discPaths.empty() ? NothingLost : OthersSaved;
  const auto size = static_cast<std::size_t>(bytes);
  if (text.size() > size) return std::nullopt;
  // Lines of blanks, so that no viewer meets one long line.
  const std::size_t start = text.size();
  text.resize(size, ' ');
  for (std::size_t at = start + PaddingLine; at < size; at += PaddingLine) text[at] = '\n';
  if (size > start) text.back() = '\n';
  return text;
}

std::optional<std::vector<std::string>> parse(std::string_view text) {
  const auto first = takeLine(text);
  const auto count = first ? countIn(*first) : std::nullopt;
  // Each path takes two bytes at least: no number makes the memory run out.
  if (!count || *count > text.size() / 2) return std::nullopt;
  std::vector<std::string> paths;
  paths.reserve(*count);
  while (paths.size() < *count) {
    const auto line = takeLine(text);
    if (!line || line->empty()) return std::nullopt;
    paths.emplace_back(*line);
  }
  // The sentence behind the last path shows that the list is whole.
  if (!text.starts_with(*count == 0 ? NothingLost : OthersSaved)) return std::nullopt;
  return paths;
}

}  // namespace korvenal::FaultList
