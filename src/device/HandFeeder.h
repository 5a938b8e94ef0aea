#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/LoadPrompt.h"
#include "platform/ImageTrays.h"

namespace korvenal {

/// How well a disc of the shelf fits what a prompt asks for.
enum class DiscFit {
  Asked,    ///< the very disc
  Fitting,  ///< would do as well, as far as can be told
  Other,
};

struct ShelfDisc {
  ImageDisc disc;
  DiscFit fit = DiscFit::Other;
};

/// What a person can put into image drives while a prompt asks for discs: knows what is asked for,
/// and gives new blank discs names that tell what they are for.
class HandFeeder {
 public:
  /// `purpose` is a `WorkerModeValue`; the references outlive this.
  HandFeeder(ImageTrays& trays, const DiscRequest& request, int purpose)
      : trays_(trays), request_(request), purpose_(purpose) {}

  /// The type of blank disc that the run wants; `DiscNone` when it wants none.
  std::uint8_t blankType() const;
  /// What is asked for, in a few words: "Backup #2 of Photos (2026-11-22-10-00-F)". `disc` is the
  /// next one of a burn, `drives` how many discs of a restore are wanted at once.
  std::string wanted(int disc, int drives) const;
  /// All discs of the shelf: those that fit best first, then the newest.
  std::vector<ShelfDisc> discs(int disc, int drives) const;
  /// The name, without extension, of a new blank disc; `disc` is the one that a burn puts on it.
  std::string blankName(std::uint8_t typeCode, int disc) const;

 private:
  DiscFit fitOf(const ImageDisc& found, int disc, int drives) const;
  DiscFit fitOfRestore(const ImageDisc& found, int drives) const;

  ImageTrays& trays_;
  const DiscRequest& request_;
  int purpose_;
};

/// A sentence for a person about a change of discs that failed.
std::string trayFaultText(TrayResult result, const std::string& shelf);

}  // namespace korvenal
