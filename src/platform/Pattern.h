#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvenal {

/// A list of patterns made ready for many names. '*' is any run of characters, '?' one character,
/// case is ignored. Empty patterns do not count.
class PatternList {
 public:
  explicit PatternList(const std::vector<std::string>& patterns);

  bool isEmpty() const { return patterns_.empty(); }
  bool matchesAny(std::string_view name) const;

 private:
  std::vector<std::u32string> patterns_;
  bool matchesAll_ = false;
};

}  // namespace korvenal
