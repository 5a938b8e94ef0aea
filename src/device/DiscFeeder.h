#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "device/LoadPrompt.h"
#include "platform/ImageTrays.h"

namespace korvenal {

/// Puts the obvious disc into image drives, so that nobody is asked for what is plain: a blank disc
/// for a burn, the wanted label for a restore, the first disc of the newest set for reading an
/// index. It never writes over a disc: one that is in the way goes out to the shelf first. Drives
/// that a person has served in the prompt are left alone, and real drives always are.
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
  void doFeedIndexDisc();

  /// The disc that a burn of this disc type (index) gets.
  static std::uint8_t blankTypeFor(int comboDiscType);

 private:
  /// Looked at once a feeding: every disc on it has to be opened for its label.
  using Shelf = std::vector<ImageDisc>;

  bool mayServe(char letter) const;
  void doChangeToBlank(char letter, std::uint8_t typeCode, const std::string& name);
  bool holdsWanted(char letter, const std::string& label, const std::string& setName,
                   const Shelf& shelf) const;
  /// The newest disc with the label, of this set when one is named. Empty: none.
  static std::string findOnShelf(const Shelf& shelf, const std::string& label,
                                 const std::string& setName);

  ImageTrays& trays_;
  std::string drives_;
  std::set<char> kept_;
};

}  // namespace korvenal
