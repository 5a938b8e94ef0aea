#include "device/DiscFeeder.h"

#include <algorithm>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

/// Between the name of a set and the number of a disc in the names of image files.
constexpr std::string_view DiscWord = " disc ";

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

std::string discName(const std::string& setName, int disc) {
  const std::string stem = stemOf(setName);
  return (stem.empty() ? "Backup" : stem) + std::string(DiscWord) + Text::zeroPadded(disc, 2);
}

std::string_view nameOf(const ImageDisc& disc) {
  return Paths::doGetFilePart(disc.file);
}
bool isBlank(const ImageDisc& disc) {
  return disc.sessions == 0 && !disc.closed;
}

bool isOfSet(const ImageDisc& disc, const std::string& setName) {
  const std::string stem = stemOf(setName);
  return !stem.empty() && Text::startsWith(nameOf(disc), stem + std::string(DiscWord));
}

/// True for "name.iso" and, when that was taken, "name 2.iso".
bool isNamed(const ImageDisc& disc, const std::string& name) {
  std::string_view own = nameOf(disc);
  if (!Text::startsWith(own, name)) return false;
  own.remove_prefix(name.size());
  return own.empty() || own.front() == '.' || own.front() == ' ';
}

/// A blank disc that was put in for another disc of a plan: its name would tell lies.
bool isMeantForAnother(const ImageDisc& disc, const std::string& name) {
  return nameOf(disc).find(DiscWord) != std::string_view::npos && !isNamed(disc, name);
}

}  // namespace

std::uint8_t DiscFeeder::blankTypeFor(int comboDiscType) {
  constexpr std::uint8_t CdR = 2, DvdR = 5, DvdPlusRDl = 12;
  switch (comboDiscType) {
    case 0:
      return CdR;
    case 1:
      return DvdR;
    default:
      return DvdPlusRDl;
  }
}

bool DiscFeeder::mayServe(char letter) const {
  return trays_.isImageDrive(letter) && !kept_.contains(letter);
}

void DiscFeeder::doFeedBlanks(const DiscRequest& request, int from, int to) {
  if (!trays_.isFeederOn()) return;
  const std::uint8_t typeCode = blankTypeFor(request.comboDiscType);
  int disc = from;
  for (const char letter : drives_) {
    if (disc > to) return;
    const std::string name = discName(request.setName, disc++);
    if (!mayServe(letter)) continue;
    const ImageDisc inside = trays_.discIn(letter);
    const bool failed = request.FailedDrives.find(letter) != std::string::npos;
    const bool usable =
        !inside.file.empty() && !failed && isBlank(inside) && !isMeantForAnother(inside, name);
    if (!usable) doChangeToBlank(letter, typeCode, name);
  }
}

void DiscFeeder::doChangeToBlank(char letter, std::uint8_t typeCode, const std::string& name) {
  // One that was made for this very disc and never written lies ready after a stopped run.
  for (const ImageDisc& disc : trays_.discsOnShelf()) {
    if (!isBlank(disc) || disc.typeCode != typeCode || !isNamed(disc, name)) continue;
    doChangeTo(letter, disc.file);
    return;
  }
  if (!trays_.discIn(letter).file.empty() && !trays_.remove(letter)) return;
  trays_.insertBlank(letter, typeCode, name, 0);
}

void DiscFeeder::doFeedRestore(const DiscRequest& request) {
  if (!trays_.isFeederOn()) return;
  std::vector<std::string> missing;
  for (int k = 1; k <= static_cast<int>(drives_.size()); ++k) {
    const int disc = request.restoreDisc(request.RestoreDiscIndex + k);
    if (disc > 0) missing.push_back(labelOf(disc));
  }
  const Shelf shelf = trays_.discsOnShelf();
  // What is already in stays where it is; the other wanted discs share the remaining drives.
  std::string free;
  for (const char letter : drives_) {
    const auto wanted = std::find_if(missing.begin(), missing.end(), [&](const auto& label) {
      return holdsWanted(letter, label, request.setName, shelf);
    });
    if (wanted != missing.end())
      missing.erase(wanted);
    else if (mayServe(letter))
      free += letter;
  }
  for (const std::string& label : missing) {
    if (free.empty()) return;
    std::string file = findOnShelf(shelf, label, request.setName);
    if (file.empty()) file = findOnShelf(shelf, label, "");
    if (!file.empty() && doChangeTo(free.front(), file)) free.erase(0, 1);
  }
}

bool DiscFeeder::holdsWanted(char letter, const std::string& label, const std::string& setName,
                             const Shelf& shelf) const {
  if (!trays_.isImageDrive(letter)) return false;
  const ImageDisc inside = trays_.discIn(letter);
  if (inside.file.empty() || inside.label != label) return false;
  // A disc that a person named is as good as any, unless the very disc of the set lies ready.
  return setName.empty() || isOfSet(inside, setName) || findOnShelf(shelf, label, setName).empty();
}

void DiscFeeder::doFeedIndexDisc() {
  if (!trays_.isFeederOn()) return;
  const std::string label = labelOf(1);
  char target = 0;
  for (const char letter : drives_) {
    if (!trays_.isImageDrive(letter)) continue;
    if (trays_.discIn(letter).label == label) return;
    if (target == 0 && mayServe(letter)) target = letter;
  }
  if (target == 0) return;
  const Shelf shelf = trays_.discsOnShelf();
  std::string file = findOnShelf(shelf, label, "");
  if (file.empty()) {
    // Without any first disc a single written one can only be what is meant.
    int written = 0;
    for (const ImageDisc& disc : shelf) {
      if (isBlank(disc)) continue;
      file = disc.file;
      ++written;
    }
    if (written != 1 || !trays_.discIn(target).label.empty()) return;
  }
  doChangeTo(target, file);
}

std::string DiscFeeder::findOnShelf(const Shelf& shelf, const std::string& label,
                                    const std::string& setName) {
  std::string file;
  UnixTime newest = 0;
  for (const ImageDisc& disc : shelf) {
    if (disc.label != label || (!setName.empty() && !isOfSet(disc, setName))) continue;
    if (!file.empty() && disc.modified <= newest) continue;
    file = disc.file;
    newest = disc.modified;
  }
  return file;
}

bool DiscFeeder::doChangeTo(char letter, const std::string& file) {
  if (!trays_.discIn(letter).file.empty() && !trays_.remove(letter)) return false;
  return trays_.insert(letter, file);
}

}  // namespace korvenal
