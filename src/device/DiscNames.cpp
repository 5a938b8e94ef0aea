#include "device/DiscNames.h"

#include <algorithm>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal::DiscNames {

namespace {

/// Between the name of a set and the number of a disc in the names of image files.
constexpr std::string_view DiscWord = " disc ";

const std::string LabelHead = "Backup #";

constexpr std::size_t StampBytes = 21;  ///< " (2026-11-22-10-00-F)", the end of a set's name
constexpr std::size_t LongestSet = 160;
constexpr std::size_t LongestJob = 120;

/// The name of a set as image files bear it: not hidden, and never so long that the disc's number
/// would be cut off.
std::string stemOf(std::string_view setName) {
  while (setName.starts_with('.')) setName.remove_prefix(1);
  if (setName.size() <= LongestSet) return std::string(setName);
  return std::string(Text::firstBytes(setName, LongestJob)) +
         std::string(Text::lastBytes(setName, StampBytes));
}

std::string_view nameOf(const ImageDisc& disc) {
  return Paths::doGetFilePart(disc.file);
}

}  // namespace

std::string labelOf(int disc) {
  return LabelHead + std::to_string(disc);
}

std::string ofSet(const std::string& setName, int disc) {
  const std::string stem = stemOf(setName);
  return (stem.empty() ? "Backup" : stem) + std::string(DiscWord) + Text::zeroPadded(disc, 2);
}

bool bears(const ImageDisc& disc, const std::string& label) {
  return std::any_of(disc.trees.begin(), disc.trees.end(),
                     [&](const DiscSession& tree) { return tree.label == label; });
}

bool isOfAnySet(const ImageDisc& disc) {
  return std::any_of(disc.trees.begin(), disc.trees.end(), [](const DiscSession& tree) {
    return Text::startsWith(tree.label, LabelHead);
  });
}

bool isOfSet(const ImageDisc& disc, const std::string& setName) {
  const std::string stem = stemOf(setName);
  return !stem.empty() && Text::startsWith(nameOf(disc), stem + std::string(DiscWord));
}

bool isNamed(const ImageDisc& disc, const std::string& name) {
  std::string_view own = nameOf(disc);
  if (!Text::startsWith(own, name)) return false;
  own.remove_prefix(name.size());
  return own.empty() || own.front() == '.' || own.front() == ' ';
}

bool isMeantForAnother(const ImageDisc& disc, const std::string& name) {
  return nameOf(disc).find(DiscWord) != std::string_view::npos && !isNamed(disc, name);
}

bool isOfAnotherSet(const ImageDisc& disc, const std::string& setName) {
  return nameOf(disc).find(DiscWord) != std::string_view::npos && !isOfSet(disc, setName);
}

bool isBlank(const ImageDisc& disc) {
  return disc.sessions == 0 && !disc.closed && disc.elsewhere == ImageUse::None;
}

}  // namespace korvenal::DiscNames
