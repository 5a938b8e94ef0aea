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
  missing_.clear();
  if (!trays_.isFeederOn()) return;
  std::vector<int> wanted;
  for (int k = 1; k <= static_cast<int>(drives_.size()); ++k)
    if (const int disc = request.restoreDisc(request.RestoreDiscIndex + k); disc > 0)
      wanted.push_back(disc);
  const Shelf shelf = trays_.discsOnShelf();
  // What is already in stays where it is; the other wanted discs share the remaining drives.
  std::string free;
  for (const char letter : drives_) {
    const auto inside = std::find_if(wanted.begin(), wanted.end(), [&](int disc) {
      return holdsWanted(letter, disc, request, shelf);
    });
    if (inside != wanted.end())
      wanted.erase(inside);
    else if (mayServe(letter))
      free += letter;
  }
  const bool marked = hasMarkedDisc(shelf, request);
  for (const int disc : wanted) {
    if (free.empty()) return;
    const auto [file, fit] = findOfSet(shelf, disc, request);
    // Of a set whose discs tell it, one that does not is for a person to choose.
    if (file.empty() || (marked && fit != Fit::OfSet))
      missing_.push_back(disc);
    else if (trays_.insert(free.front(), file))
      free.erase(0, 1);
  }
}

DiscFeeder::Fit DiscFeeder::fitOf(const ImageDisc& disc, int number, const DiscRequest& request) {
  WantedDisc wanted = request.wantedSet;
  wanted.label = labelOf(number);
  switch (matchDisc(disc.trees, wanted).kind) {
    case DiscMatch::Kind::OfSet:
      return Fit::OfSet;
    case DiscMatch::Kind::ByLabel:
      if (isOfSet(disc, request.setName)) return Fit::Named;
      // A disc that a person named is as good as any; one that is named for another set is not.
      return !request.setName.empty() && DiscNames::isOfAnotherSet(disc, request.setName)
                 ? Fit::None
                 : Fit::Labelled;
    default:
      return Fit::None;
  }
}

bool DiscFeeder::holdsWanted(char letter, int disc, const DiscRequest& request,
                             const Shelf& shelf) const {
  if (!trays_.isImageDrive(letter)) return false;
  const Fit fit = fitOf(trays_.discIn(letter), disc, request);
  return fit != Fit::None && findOfSet(shelf, disc, request).fit <= fit;
}

bool DiscFeeder::hasMarkedDisc(const Shelf& shelf, const DiscRequest& request) const {
  const auto isOfSet = [&request](const ImageDisc& disc) {
    return std::any_of(disc.trees.begin(), disc.trees.end(), [&](const DiscSession& tree) {
      return tree.identity.isSame(request.wantedSet.identity);
    });
  };
  return std::any_of(shelf.begin(), shelf.end(), isOfSet) ||
         std::any_of(drives_.begin(), drives_.end(), [&](char letter) {
           return trays_.isImageDrive(letter) && isOfSet(trays_.discIn(letter));
         });
}

DiscFeeder::Candidate DiscFeeder::findOfSet(const Shelf& shelf, int number,
                                            const DiscRequest& request) {
  Candidate best;
  UnixTime newest = 0;
  for (const ImageDisc& disc : shelf) {
    const Fit fit = fitOf(disc, number, request);
    if (fit == Fit::None || fit < best.fit || (fit == best.fit && disc.modified <= newest))
      continue;
    best = {disc.file, fit};
    newest = disc.modified;
  }
  return best;
}

void DiscFeeder::doFeedIndexDisc() {
  if (!trays_.isFeederOn()) return;
  const std::string label = labelOf(1);
  char target = 0;
  for (const char letter : drives_) {
    if (!trays_.isImageDrive(letter)) continue;
    if (DiscNames::bears(trays_.discIn(letter), label)) return;
    if (target == 0 && mayServe(letter)) target = letter;
  }
  if (target == 0) return;
  const Shelf shelf = trays_.discsOnShelf();
  std::string file =
      newestOf(shelf, [&](const ImageDisc& disc) { return DiscNames::bears(disc, label); });
  // Any disc of a set may carry its index as well.
  if (file.empty() && trays_.discIn(target).label.empty())
    file = newestOf(shelf, &DiscNames::isOfAnySet);
  if (file.empty()) {
    // Without any disc of a set a single written one can only be what is meant.
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

std::string DiscFeeder::newestOf(const Shelf& shelf,
                                 const std::function<bool(const ImageDisc&)>& isMeant) {
  std::string file;
  UnixTime newest = 0;
  for (const ImageDisc& disc : shelf) {
    if (!isMeant(disc) || (!file.empty() && disc.modified <= newest)) continue;
    file = disc.file;
    newest = disc.modified;
  }
  return file;
}

}  // namespace korvenal
