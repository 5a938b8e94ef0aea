#include "device/HandFeeder.h"

#include <algorithm>

#include "core/DiscTypes.h"
#include "device/DiscFeeder.h"
#include "device/DiscNames.h"
#include "platform/DiscType.h"

namespace korvenal {

namespace {

bool isRewritable(std::uint8_t type) {
  constexpr std::uint8_t Types[] = {
      DiscCdRw, DiscDvdRam, DiscDvdRwRestricted, DiscDvdRwAny, DiscDvdRw, DiscDvdPlusRw, 15};
  return std::find(std::begin(Types), std::end(Types), type) != std::end(Types);
}

}  // namespace

std::uint8_t HandFeeder::blankType() const {
  if (purpose_ != WorkerBurn) return DiscNone;
  return DiscFeeder::blankTypeFor(request_.comboDiscType);
}

std::string HandFeeder::blankName(std::uint8_t typeCode, int disc) const {
  return purpose_ == WorkerBurn ? DiscNames::ofSet(request_.setName, disc)
                                : doGetDiscTypeName(typeCode);
}

std::string HandFeeder::wanted(int disc, int drives) const {
  if (purpose_ == WorkerErase) return "a rewritable disc";
  if (purpose_ == WorkerReadIndex) return DiscNames::labelOf(1);
  if (purpose_ == WorkerBurn)
    return "a blank disc (" + doGetDiscTypeName(blankType()) + ") for " + DiscNames::labelOf(disc);
  std::string labels;
  for (int k = 1; k <= drives; ++k) {
    const int next = request_.restoreDisc(request_.RestoreDiscIndex + k);
    if (next > 0) labels += (labels.empty() ? "" : ", ") + DiscNames::labelOf(next);
  }
  return request_.setName.empty() ? labels : labels + " of " + request_.setName;
}

DiscFit HandFeeder::fitOfRestore(const ImageDisc& found, int drives) const {
  for (int k = 1; k <= drives; ++k) {
    const int next = request_.restoreDisc(request_.RestoreDiscIndex + k);
    if (next == 0) continue;
    WantedDisc wanted = request_.wantedSet;
    wanted.label = DiscNames::labelOf(next);
    const auto kind = matchDisc(found.trees, wanted).kind;
    if (kind == DiscMatch::Kind::OfSet) return DiscFit::Asked;
    if (kind == DiscMatch::Kind::ByLabel)
      return DiscNames::isOfSet(found, request_.setName) ? DiscFit::Asked : DiscFit::Fitting;
  }
  return DiscFit::Other;
}

DiscFit HandFeeder::fitOf(const ImageDisc& found, int disc, int drives) const {
  switch (purpose_) {
    case WorkerBurn: {
      if (!DiscNames::isBlank(found) || found.typeCode != blankType()) return DiscFit::Other;
      const std::string name = DiscNames::ofSet(request_.setName, disc);
      if (DiscNames::isNamed(found, name)) return DiscFit::Asked;
      return DiscNames::isMeantForAnother(found, name) ? DiscFit::Other : DiscFit::Fitting;
    }
    case WorkerRestore:
      return fitOfRestore(found, drives);
    case WorkerErase:
      return isRewritable(found.typeCode) ? DiscFit::Fitting : DiscFit::Other;
    default:
      return DiscNames::bears(found, DiscNames::labelOf(1)) ? DiscFit::Asked : DiscFit::Other;
  }
}

std::vector<ShelfDisc> HandFeeder::discs(int disc, int drives) const {
  std::vector<ShelfDisc> all;
  for (ImageDisc& found : trays_.discsOnShelf()) {
    const DiscFit fit = fitOf(found, disc, drives);
    all.push_back({std::move(found), fit});
  }
  std::sort(all.begin(), all.end(), [](const ShelfDisc& a, const ShelfDisc& b) {
    if (a.fit != b.fit) return a.fit < b.fit;
    if (a.disc.modified != b.disc.modified) return a.disc.modified > b.disc.modified;
    return a.disc.file < b.disc.file;
  });
  return all;
}

std::string trayFaultText(TrayResult result, const std::string& shelf) {
  switch (result.fault) {
    case TrayResult::DriveBusy:
      return "The drive is at work. The disc in it can be changed when it has finished.";
    case TrayResult::InAnotherDrive:
      return "This disc lies in another drive. Take it out there first.";
    case TrayResult::NotADisc:
      return "This file is missing, damaged or no image of a disc.";
    case TrayResult::NotMade:
      return "The disc cannot be made. The folder " + shelf + " is full or may not be written to.";
    case TrayResult::InUse:
      return "This disc is in use by another program.";
    case TrayResult::None:
      break;
  }
  return {};
}

}  // namespace korvenal
