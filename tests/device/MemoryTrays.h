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
  std::vector<std::string> log;  ///< every change, in order

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
  ImageDisc discIn(char letter) const override { return trays.at(letter); }
  bool isOpen(char) const override { return false; }
  std::string shelf() const override { return "/shelf/"; }
  std::vector<ImageDisc> discsOnShelf() const override { return onShelf; }
  bool insertBlank(char letter, std::uint8_t typeCode, const std::string& name,
                   std::int64_t) override {
    log.push_back("blank " + name);
    if (!trays.at(letter).file.empty()) return false;
    ImageDisc disc;
    disc.file = "/shelf/" + name + ".iso";
    disc.typeCode = typeCode;
    trays[letter] = disc;
    return true;
  }
  bool insert(char letter, const std::string& file) override {
    log.push_back("insert " + file);
    const auto at = std::find_if(onShelf.begin(), onShelf.end(),
                                 [&](const ImageDisc& disc) { return disc.file == file; });
    if (at == onShelf.end() || !trays.at(letter).file.empty()) return false;
    trays[letter] = *at;
    onShelf.erase(at);
    return true;
  }
  bool remove(char letter) override {
    log.push_back("remove " + nameIn(letter));
    onShelf.push_back(trays.at(letter));
    trays[letter] = {};
    return true;
  }
};

}  // namespace korvenal::test
