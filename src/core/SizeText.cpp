#include "core/SizeText.h"

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t KiB = 1024;
constexpr std::int64_t MiB = KiB * 1024;
constexpr std::int64_t GiB = MiB * 1024;

std::string inUnit(Fixed4 bytes, std::int64_t unit) {
  return Text::groupedOneDecimal(bytes.toDouble() / static_cast<double>(unit));
}

}  // namespace

std::string formatSizeText(Fixed4 bytes, bool bigUnits) {
  if (bytes <= Fixed4(0)) return "0 KB";
  if (bytes <= Fixed4(KiB)) return "1 KB";
  if (bigUnits && bytes >= Fixed4(GiB)) return inUnit(bytes, GiB) + " GB";
  if (bigUnits && bytes >= Fixed4(MiB)) {
    // Rounding just below a GB would show a number of MB that the unit never has.
    const std::string text = inUnit(bytes, MiB);
    return text == "1,024.0" ? "1.0 GB" : text + " MB";
  }
  return Text::grouped((bytes + Fixed4(KiB - 1)).whole() / KiB) + " KB";
}

}  // namespace korvenal
