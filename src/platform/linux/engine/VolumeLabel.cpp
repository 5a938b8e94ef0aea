#include "platform/linux/engine/VolumeLabel.h"

#include <array>
#include <cstring>
#include <string_view>

#include "platform/BurnEngine.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

using Block = std::array<std::uint8_t, BlockBytes>;

constexpr std::uint32_t FirstDescriptor = 16;  ///< blocks behind the start of a session
constexpr std::uint32_t MaxDescriptors = 16;
constexpr std::size_t LabelAt = 40;
constexpr std::size_t LabelBytes = 32;
constexpr std::size_t SetAt = 190;  ///< the volume-set id, of 128 bytes
constexpr std::uint8_t Primary = 1;
constexpr std::uint8_t Supplementary = 2;

void appendUtf8(std::string& text, unsigned unit) {
  if (unit < 0x80) {
    text += static_cast<char>(unit);
  } else if (unit < 0x800) {
    text += static_cast<char>(0xC0 | unit >> 6);
    text += static_cast<char>(0x80 | (unit & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | unit >> 12);
    text += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (unit & 0x3F));
  }
}

std::string plainText(const Block& block, std::size_t at, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(block.data()) + at, size);
  const std::string text(Text::trim(bytes.substr(0, bytes.find('\0'))));
  return Text::isUtf8(text) ? text : std::string();
}

std::string wideLabel(const Block& block) {
  std::string label;
  for (std::size_t i = 0; i < LabelBytes; i += 2) {
    const unsigned unit = block[LabelAt + i] << 8U | block[LabelAt + i + 1];
    if (unit == 0) break;
    // Labels are kept within the basic plane; anything else is not ours to show.
    appendUtf8(label, unit >= 0xD800 && unit < 0xE000 ? '_' : unit);
  }
  return std::string(Text::trim(label));
}

bool isJoliet(const Block& block) {
  return block[88] == '%' && block[89] == '/' && block[90] >= '@' && block[90] <= 'E';
}

bool isAscii(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

std::uint32_t littleEndian(const std::uint8_t* bytes) {
  return bytes[0] | bytes[1] << 8U | bytes[2] << 16U | std::uint32_t{bytes[3]} << 24U;
}

}  // namespace

std::optional<VolumeHead> readVolumeHead(BlockReader& disc, std::uint32_t start) {
  std::optional<VolumeHead> head;
  Block block{};
  for (std::uint32_t i = 0; i < MaxDescriptors; ++i) {
    if (disc.read(start + FirstDescriptor + i, 1, block.data()) != 1) break;
    if (std::memcmp(block.data() + 1, "CD001", 5) != 0) break;
    if (block[0] == Primary) {
      head = VolumeHead{plainText(block, LabelAt, LabelBytes), littleEndian(block.data() + 80),
                        SetIdentity::parse(plainText(block, SetAt, SetIdentity::MaxBytes))};
    } else if (block[0] == Supplementary && head && isJoliet(block)) {
      const std::string wide = wideLabel(block);
      if (!isAscii(wide)) head->label = wide;
    }
  }
  return head;
}

}  // namespace korvenal
