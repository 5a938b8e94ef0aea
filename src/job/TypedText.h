#pragma once

#include <string>
#include <string_view>

namespace korvenal {

/// What a field takes of a text that is typed or pasted: all but control characters (line ends
/// among them) and the characters that the field refuses.
inline std::string typedText(std::string_view text, std::string_view refused) {
  std::string taken;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7f && refused.find(c) == std::string_view::npos) taken += c;
  }
  return taken;
}

}  // namespace korvenal
