#include "platform/Pattern.h"

#include <algorithm>

#include "platform/Text.h"
#include "platform/Walker.h"

namespace korvenal {

namespace {

char32_t foldedAscii(char c) {
  return static_cast<char32_t>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}
char32_t foldedAscii(char32_t c) {
  return c;
}

/// On a mismatch only the last star takes one character more: what earlier stars took can stay, so
/// the work is bounded by the product of both lengths.
template <typename Name>
bool matches(const Name& name, std::u32string_view pattern) {
  constexpr std::size_t None = std::u32string_view::npos;
  std::size_t at = 0, in = 0, behindStar = None, starEnd = 0;
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == U'*') {
      behindStar = ++in;
      starEnd = at;
    } else if (in < pattern.size() &&
               (pattern[in] == U'?' || pattern[in] == foldedAscii(name[at]))) {
      ++in;
      ++at;
    } else if (behindStar != None) {
      in = behindStar;
      at = ++starEnd;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(U'*', in) == None;
}

}  // namespace

PatternList::PatternList(const std::vector<std::string>& patterns) {
  for (const std::string& pattern : patterns)
    if (!pattern.empty()) patterns_.push_back(Text::foldedCharacters(pattern));
  matchesAll_ = std::any_of(patterns_.begin(), patterns_.end(), [](const std::u32string& pattern) {
    return pattern.find_first_not_of(U'*') == std::u32string::npos;
  });
}

bool PatternList::matchesAny(std::string_view name) const {
  if (matchesAll_ || patterns_.empty()) return matchesAll_;
  const auto anyMatches = [&](const auto& characters) {
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const std::u32string& pattern) { return matches(characters, pattern); });
  };
  const bool ascii = std::all_of(name.begin(), name.end(),
                                 [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  return ascii ? anyMatches(name) : anyMatches(Text::foldedCharacters(name));
}

bool matchesPattern(std::string_view name, std::string_view pattern) {
  return PatternList({std::string(pattern)}).matchesAny(name);
}

}  // namespace korvenal
