#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/ImageTrays.h"
#include "platform/linux/engine/ImageDrive.h"

namespace korvenal {

/// The image drives and the shelf, a folder of image files. What lies in the trays and which of
/// them are open is kept in the file "trays" on the shelf: one line a drive with the letter, "open"
/// or "closed", and the image's file (its name alone when it is on the shelf), separated by tabs.
class ImageShelf : public ImageTrays {
 public:
  static constexpr int MaxDrives = 5;

  struct Options {
    std::string folder;  ///< native path; made when it is missing
    int drives = 1;      ///< 1 to 5, the letters V to Z
    bool feeder = true;
    std::vector<DriveAbility> abilities = {};  ///< of the drives in order; those left out write all
  };

  /// `files` serves native paths; it must outlive this.
  ImageShelf(Files& files, Options options);

  bool isImageDrive(char letter) const override { return find(letter) != nullptr; }
  std::vector<char> letters() const override;
  bool isFeederOn() const override { return feeder_; }
  ImageDisc discIn(char letter) const override;
  bool isOpen(char letter) const override;
  std::string shelf() const override { return folder_; }
  std::vector<ImageDisc> discsOnShelf() const override;
  std::vector<std::string> discFiles() const override;
  std::vector<std::string> writtenFiles() const override;
  TrayResult insertBlank(char letter, std::uint8_t typeCode, const std::string& name,
                         std::int64_t blocks) override;
  TrayResult insert(char letter, const std::string& file) override;
  TrayResult remove(char letter) override;

  /// The drives, which live as long as this.
  std::vector<Drive*> drives() const;

 private:
  ImageDrive* find(char letter) const;
  bool isInUse(const std::string& image) const;
  ImageUse usedElsewhere(const std::string& image) const;
  ImageDisc describe(const std::string& image) const;
  std::string freeName(const std::string& name) const;
  void loadTrays();
  void storeTrays();

  Files& files_;
  std::string folder_;
  bool feeder_;
  std::vector<std::unique_ptr<ImageDrive>> drives_;
};

}  // namespace korvenal
