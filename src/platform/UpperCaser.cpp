#include "platform/UpperCaser.h"

#include <array>
#include <cstring>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t MostBytes = 3;
constexpr unsigned PlainCharacters = 0x80;      ///< ASCII
constexpr std::uint32_t TooLong = 0xFF000000U;  ///< an upper-case form that does not fit

struct Character {
  std::size_t length = 0;  ///< bytes; 0 for what is not well-formed or beyond the basic plane
  std::size_t code = 0;
};

unsigned byteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
}

bool isTail(unsigned byte) {
  return (byte & 0xC0U) == 0x80U;
}

/// The character beyond ASCII that the text begins with.
Character characterAt(std::string_view text) {
  const unsigned lead = byteAt(text, 0), second = byteAt(text, 1);
  if (lead < 0xC2 || lead > 0xEF || !isTail(second)) return {};
  if (lead < 0xE0) return {2, (lead & 0x1FU) << 6U | (second & 0x3FU)};
  const unsigned third = byteAt(text, 2);
  const std::size_t code = (lead & 0x0FU) << 12U | (second & 0x3FU) << 6U | (third & 0x3FU);
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (!isTail(third) || code < 0x800 || surrogate) return {};
  return {3, code};
}

std::size_t plainFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && byteAt(text, at) >= 0x80) ++at;
  return at;
}

char upperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// The two bytes there, as they lie in memory.
std::uint16_t pairAt(const char* bytes) {
  std::uint16_t pair = 0;
  std::memcpy(&pair, bytes, sizeof pair);
  return pair;
}

}  // namespace

UpperCaser::UpperCaser() : known_(Characters), pairs_(Pairs) {
  for (unsigned both = 0; both < PlainCharacters * PlainCharacters; ++both) {
    const std::array<char, 2> plain = {static_cast<char>(both / PlainCharacters),
                                       static_cast<char>(both % PlainCharacters)};
    const std::array<char, 2> upper = {upperAscii(plain[0]), upperAscii(plain[1])};
    pairs_[pairAt(plain.data())] = pairAt(upper.data());
  }
}

std::uint32_t UpperCaser::learn(std::string_view character, std::size_t code) {
  const std::string upper = Text::toUpper(character);
  std::uint32_t form = TooLong;
  if (!upper.empty() && upper.size() <= MostBytes) {
    form = static_cast<std::uint32_t>(upper.size()) << 24U;
    for (std::size_t i = 0; i < upper.size(); ++i) form |= byteAt(upper, i) << (8 * i);
  }
  if (character.size() == 2 && upper.size() == 2)
    pairs_[pairAt(character.data())] = pairAt(upper.data());
  return known_[code] = form;
}

std::uint32_t UpperCaser::formOf(std::string_view rest, std::size_t& length) {
  const Character character = characterAt(rest);
  length = character.length;
  if (length == 0) return TooLong;
  const std::uint32_t form = known_[character.code];
  return form != 0 ? form : learn(rest.substr(0, length), character.code);
}

std::size_t UpperCaser::changePairs(std::string_view text, char* out) const {
  std::size_t at = 0;
  for (; at + 1 < text.size(); at += 2) {
    const std::uint16_t upper = pairs_[pairAt(text.data() + at)];
    if (upper == 0) break;
    std::memcpy(out + at, &upper, sizeof upper);
  }
  return at;
}

std::string UpperCaser::toUpper(std::string_view text) {
  // No character that is remembered grows by more than half.
  std::string result(text.size() + text.size() / 2, '\0');
  std::size_t to = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t pairs = changePairs(text.substr(at), result.data() + to);
    at += pairs;
    to += pairs;
    if (at == text.size()) break;
    if (byteAt(text, at) < 0x80) {
      result[to++] = upperAscii(text[at++]);
      continue;
    }
    std::size_t length = 0;
    std::uint32_t form = formOf(text.substr(at), length);
    if (form != TooLong) {
      for (std::uint32_t bytes = form >> 24U; bytes > 0; --bytes, form >>= 8U)
        result[to++] = static_cast<char>(form & 0xFFU);
      at += length;
      continue;
    }
    // Something rare: the library maps all up to the next plain character.
    const std::size_t end = plainFrom(text, at);
    const std::string upper = Text::toUpper(text.substr(at, end - at));
    const std::size_t rest = text.size() - end;
    result.resize(to);
    result += upper;
    to = result.size();
    result.resize(to + rest + rest / 2);
    at = end;
  }
  result.resize(to);
  return result;
}

}  // namespace korvenal
