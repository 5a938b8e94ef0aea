#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvenal {

/// Text::toUpper for a great many texts: remembers what it has learned of each character, so that
/// names in any script take about a nanosecond a character. Holds 384 KB.
class UpperCaser {
 public:
  UpperCaser();

  /// The same as Text::toUpper.
  std::string toUpper(std::string_view text);

 private:
  static constexpr std::size_t Characters = 0x10000;  ///< the basic plane
  static constexpr std::size_t Pairs = 0x10000;       ///< of bytes

  std::uint32_t learn(std::string_view character, std::size_t code);
  /// Changes two bytes at a time as far as they are known pairs: two characters of ASCII, or one of
  /// two bytes that stays so long. The bytes taken, as many as given.
  std::size_t changePairs(std::string_view text, char* out) const;
  /// What is known of the character that `rest` begins with, and its bytes.
  std::uint32_t formOf(std::string_view rest, std::size_t& length);

  /// Up to three bytes of the upper-case form, the first one lowest, and their number in the top
  /// byte; 0 for a character not met yet.
  std::vector<std::uint32_t> known_;
  /// By the two bytes as they lie in memory: those to put in their place; 0 for any other pair.
  std::vector<std::uint16_t> pairs_;
};

}  // namespace korvenal
