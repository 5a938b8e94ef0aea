#include "console/DiscKinds.h"

#include <algorithm>
#include <array>

#include "burn/DiscTexts.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

/// Recordable types, the first of each name.
constexpr std::array<std::uint8_t, 8> BlankTypes = {2, 3, 5, 9, 10, 11, 12, 6};

}  // namespace

std::uint8_t discTypeCode(const std::string& name) {
  const auto at = std::find_if(BlankTypes.begin(), BlankTypes.end(), [&](std::uint8_t code) {
    return Text::equalsIgnoreCase(doGetDiscTypeName(code), name) || std::to_string(code) == name;
  });
  return at == BlankTypes.end() ? std::uint8_t{0} : *at;
}

std::string discTypeNames() {
  std::string names;
  for (const std::uint8_t code : BlankTypes)
    names += (names.empty() ? "" : ", ") + doGetDiscTypeName(code);
  return names;
}

std::string discDescription(const ImageDisc& disc) {
  if (disc.file.empty()) return "no disc";
  std::string text = doGetDiscTypeName(disc.typeCode);
  text += ", " + std::to_string(disc.capacityBlocks) + " blocks, ";
  if (disc.elsewhere != ImageUse::None) text += "in use by another program, ";
  if (disc.elsewhere == ImageUse::Written) return text + "being written";
  if (disc.sessions == 0) return text + (disc.closed ? "damaged" : "blank");
  text += disc.label + ", " + Text::counted(disc.sessions, "session");
  return text + (disc.closed ? ", closed" : "");
}

char driveLetter(const std::string& text) {
  const std::string upper = Text::toUpper(text);
  const bool letter = !upper.empty() && upper[0] >= 'A' && upper[0] <= 'Z';
  return letter && (upper.size() == 1 || upper.substr(1) == ":" || upper.substr(1) == ":\\")
             ? upper[0]
             : '\0';
}

}  // namespace korvenal::console
