#include "device/DiscFeeder.h"

#include <algorithm>

#include "device/DiscNames.h"

namespace korvenal {

using DiscNames::isBlank;
using DiscNames::isNamed;
using DiscNames::isOfSet;
using DiscNames::labelOf;

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
    const std::string name = DiscNames::ofSet(request.setName, disc++);
    if (!mayServe(letter)) continue;
    const ImageDisc inside = trays_.discIn(letter);
    const bool failed = request.FailedDrives.find(letter) != std::string::npos;
    const bool usable = !inside.file.empty() && !failed && isBlank(inside) &&
                        !DiscNames::isMeantForAnother(inside, name);
    if (!usable) doChangeToBlank(letter, typeCode, name);
  }
}

void DiscFeeder::doChangeToBlank(char letter, std::uint8_t typeCode, const std::string& name) {
  // One that was made for this very disc and never written lies ready after a stopped run.
  for (const ImageDisc& disc : trays_.discsOnShelf()) {
    if (!isBlank(disc) || disc.typeCode != typeCode || !isNamed(disc, name)) continue;
    trays_.insert(letter, disc.file);
    return;
  }
  // Without a disc of its own the run must not go on to one of another backup.
  if (!trays_.insertBlank(letter, typeCode, name, 0)) trays_.remove(letter);
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
    if (!file.empty() && trays_.insert(free.front(), file)) free.erase(0, 1);
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
  trays_.insert(target, file);
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

}  // namespace korvenal
