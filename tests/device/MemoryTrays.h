#pragma once

#include <algorithm>
#include <map>

#include "platform/ImageTrays.h"

namespace korvenal::test {

/// Image drives and a shelf without files. A blank disc gets the name it is asked for.
class MemoryTrays : public ImageTrays {
 public:
  bool feeder = true;
  std::map<char, ImageDisc> trays{{'V', {}}};
  std::vector<ImageDisc> onShelf;
  std::vector<std::string> log;                ///< every change, in order
  TrayResult::Fault fault = TrayResult::None;  ///< of every disc that is to go in

  static ImageDisc written(const std::string& name, const std::string& label, UnixTime modified) {
    ImageDisc disc;
    disc.file = "/shelf/" + name + ".iso";
    disc.label = label;
    disc.typeCode = 2;
    disc.sessions = 1;
    disc.modified = modified;
    return disc;
  }
  std::string nameIn(char letter) const {
    const std::string& file = trays.at(letter).file;
    return file.empty() ? "" : file.substr(7, file.size() - 11);
  }

  bool isImageDrive(char letter) const override { return trays.contains(letter); }
  std::vector<char> letters() const override { return {}; }
  bool isFeederOn() const override { return feeder; }
  ImageDisc discIn(char letter) const override { return withTree(trays.at(letter)); }
  bool isOpen(char) const override { return false; }
  std::string shelf() const override { return "/shelf/"; }
  std::vector<ImageDisc> discsOnShelf() const override {
    std::vector<ImageDisc> discs;
    for (const ImageDisc& disc : onShelf) discs.push_back(withTree(disc));
    return discs;
  }
  TrayResult insertBlank(char letter, std::uint8_t typeCode, const std::string& name,
                         std::int64_t) override {
    log.push_back("blank " + name);
    if (fault != TrayResult::None) return {fault};
    ImageDisc disc;
    disc.file = "/shelf/" + name + ".iso";
    disc.typeCode = typeCode;
    doPutIn(letter, disc);
    return {};
  }
  TrayResult insert(char letter, const std::string& file) override {
    log.push_back("insert " + file);
    if (fault != TrayResult::None) return {fault};
    const auto at = std::find_if(onShelf.begin(), onShelf.end(),
                                 [&](const ImageDisc& disc) { return disc.file == file; });
    if (at == onShelf.end()) return {TrayResult::NotADisc};
    const ImageDisc disc = *at;
    onShelf.erase(at);
    doPutIn(letter, disc);
    return {};
  }
  TrayResult remove(char letter) override {
    log.push_back("remove " + nameIn(letter));
    doPutIn(letter, {});
    return {};
  }

 private:
  /// A labelled disc of which nothing is told holds one tree, of no known set.
  static ImageDisc withTree(ImageDisc disc) {
    if (disc.trees.empty() && !disc.label.empty())
      disc.trees = {{.start = 32, .label = disc.label, .identity = {}}};
    return disc;
  }
  void doPutIn(char letter, const ImageDisc& disc) {
    if (!trays.at(letter).file.empty()) onShelf.push_back(trays.at(letter));
    trays[letter] = disc;
  }
};

}  // namespace korvenal::test
