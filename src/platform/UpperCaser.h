#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvenal {

/// Text::toUpper for a great many texts: remembers what it has learned of each character, so that
/// names in any script take a few nanoseconds a character. Holds 256 KB.
class UpperCaser {
 public:
  UpperCaser() : known_(Characters) {}

  /// The same as Text::toUpper.
  std::string toUpper(std::string_view text);

 private:
  static constexpr std::size_t Characters = 0x10000;  ///< the basic plane

  std::uint32_t learn(std::string_view character, std::size_t code);
  /// Changes known characters of two bytes that stay so long, as far as they follow each other. The
  /// bytes taken.
  std::size_t changeShort(std::string_view text, char* out, std::size_t& to) const;
  /// What is known of the character that `rest` begins with, and its bytes.
  std::uint32_t formOf(std::string_view rest, std::size_t& length);

  /// Up to three bytes of the upper-case form, the first one lowest, and their number in the top
  /// byte; 0 for a character not met yet.
  std::vector<std::uint32_t> known_;
};

}  // namespace korvenal
