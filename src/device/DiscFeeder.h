#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "device/LoadPrompt.h"
#include "platform/ImageTrays.h"

namespace korvenal {

/// Puts the obvious disc into image drives, so that nobody is asked for what is plain: a blank disc
/// for a burn, the wanted disc of the set for a restore, the first disc of the newest set for
/// reading an index, or any disc of a set where no first one is left. It never writes over a disc:
/// one that is in the way goes out to the shelf first. Drives that a person has served in the
/// prompt are left alone, and real drives always are.
class DiscFeeder {
 public:
  explicit DiscFeeder(ImageTrays& trays) : trays_(trays) {}

  /// The letters of the drives that the prompt lists, in order.
  void doUseDrives(std::string letters) { drives_ = std::move(letters); }
  /// A person chose what lies in this drive.
  void doKeep(char letter) { kept_.insert(letter); }

  /// Blank discs for the discs `from` to `to` of the plan, one a drive.
  void doFeedBlanks(const DiscRequest& request, int from, int to);
  /// The next discs of the restore list, one a drive.
  void doFeedRestore(const DiscRequest& request);
  /// The discs that the last feeding of a restore had a drive for, but found nowhere.
  const std::vector<int>& missingDiscs() const { return missing_; }
  void doFeedIndexDisc();

  /// The disc that a burn of this disc type (index) gets.
  static std::uint8_t blankTypeFor(int comboDiscType);

 private:
  /// Looked at once a feeding: every disc on it has to be opened for its label.
  using Shelf = std::vector<ImageDisc>;

  bool mayServe(char letter) const;
  void doChangeToBlank(char letter, std::uint8_t typeCode, const std::string& name);
  /// How well a disc fits a number of the set, the best last.
  enum class Fit { None, Labelled, Named, OfSet };
  struct Candidate {
    std::string file;
    Fit fit = Fit::None;
  };
  static Fit fitOf(const ImageDisc& disc, int number, const DiscRequest& request);
  bool holdsWanted(char letter, int disc, const DiscRequest& request, const Shelf& shelf) const;
  /// True when a disc at hand bears the identity of the wanted set.
  bool hasMarkedDisc(const Shelf& shelf, const DiscRequest& request) const;
  /// The newest of those that fit best.
  static Candidate findOfSet(const Shelf& shelf, int number, const DiscRequest& request);
  /// The newest of the discs that are meant. Empty: none is.
  static std::string newestOf(const Shelf& shelf,
                              const std::function<bool(const ImageDisc&)>& isMeant);

  ImageTrays& trays_;
  std::string drives_;
  std::set<char> kept_;
  std::vector<int> missing_;
};

}  // namespace korvenal
