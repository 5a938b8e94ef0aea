#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Files.h"
#include "platform/linux/engine/DiscProfile.h"
#include "platform/linux/engine/Drive.h"
#include "platform/linux/engine/HeldProfile.h"
#include "platform/linux/engine/ImageLock.h"
#include "platform/linux/engine/SessionReaders.h"

namespace korvenal {

/// A drive whose discs are image files. A disc is an ordinary ISO image, with a file of the same
/// name and ".disc" behind it for its profile.
class ImageDrive : public Drive {
 public:
  /// Called when what lies in the tray or the tray itself has changed, to keep it.
  using Changed = std::function<void()>;

  struct Identity {
    char letter = 'V';
    int number = 1;  ///< from 1 on, as it tells its name
    DriveAbility ability = DriveAbility::WritesDualLayer;
  };

  ImageDrive(Files& files, Identity identity, Changed changed);

  static std::string profileFileOf(const std::string& image) { return image + ".disc"; }
  /// The profile of an image; that of a pressed disc when it has none. Nothing when there is no
  /// such image or its profile is damaged.
  static std::optional<DiscProfile> profileOf(Files& files, const std::string& image);

  /// First blocks of the sessions of a disc that has some.
  static std::vector<std::uint32_t> startsOn(BlockReader& blocks, const DiscProfile& disc);

  const std::string& disc() const { return image_; }
  bool isOpen() const { return open_; }
  bool isBusy() const { return busy_; }
  /// What other programs do with the disc in the tray.
  ImageUse elsewhere() const { return lock_.others(image_); }
  /// Puts a disc in, or takes the old one out with an empty name. Nothing is told to `changed`.
  void setTray(const std::string& image, bool open);

  char letter() const override { return identity_.letter; }
  std::string devicePath() const override;
  bool isBurner() const override { return identity_.ability != DriveAbility::Reads; }
  bool can(std::uint8_t code) override;
  /// False also while another program writes the disc.
  bool isReady() override;
  std::string problem() const override;
  void lock(bool locked) override;
  void eject() override;
  void load() override;
  DiscState state() override;
  void setSpeed(std::int32_t, std::int32_t) override {}
  std::int32_t writeSpeed(std::int32_t wanted) override { return speedFor(wanted); }
  std::int32_t readSpeed(std::int32_t wanted) override { return speedFor(wanted); }
  std::vector<DiscSession> sessions() override;
  std::shared_ptr<DiscReader> reader(const DiscLibraries& libraries, ReaderAid aid,
                                     std::optional<std::uint32_t> session) override;
  void dropReaders() override { readers_.drop(); }
  std::unique_ptr<BlockReader> openBlocks() override;
  TrackPlace place() override;
  bool beginBurn(std::string& why) override;
  void endBurn(DriveResult& result) override;
  bool beginErase() override;
  DriveResult erase(bool quick) override;
  void endErase(const DriveResult& result) override;

 private:
  /// The profile of the disc that the closed tray holds.
  DiscProfile* profile();
  void forgetDisc();
  /// The profile says blank, and yet there is something that is no tree of ours.
  bool holdsOther();
  bool storeProfile(std::string& why);
  bool beginWriting(std::string& why);
  void recordBurn(DriveResult& result);
  void settleLock();
  std::string inUseText() const;
  std::int64_t roomBlocks(const DiscProfile& disc) const;
  bool writes(std::uint8_t type) const;
  std::int32_t speedFor(std::int32_t wanted);

  Files& files_;
  Identity identity_;
  Changed changed_;
  std::string image_;
  bool open_ = false;
  bool locked_ = false;
  std::optional<bool> holdsOther_;  ///< of the disc in the tray, once it was looked at
  bool busy_ = false;
  std::int64_t questionsUntilReady_ = 0;
  std::shared_ptr<bool> pulled_ = std::make_shared<bool>(false);  ///< by a fault while reading
  std::optional<DiscProfile> profile_;
  FileInfo
      profileSeen_;   ///< the file that `profile_` is from, to know when another program wrote it
  HeldProfile held_;  ///< while a burn is at work
  ImageLock lock_;    ///< while the tray is locked, and while the disc is written
  DiscProfile beforeErase_;  ///< while an erase is at work
  SessionReaders readers_;
};

}  // namespace korvenal
