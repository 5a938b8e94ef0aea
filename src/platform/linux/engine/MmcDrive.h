#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/engine/Drive.h"
#include "platform/linux/engine/MmcDevice.h"
#include "platform/linux/engine/SessionReaders.h"
#include "platform/linux/engine/SlowCalls.h"

namespace korvenal {

/// A real drive. It is held, and locked, from the first question about its disc until it is
/// unlocked, ejected or has written: then the disc is looked at anew.
class MmcDrive : public Drive {
 public:
  MmcDrive(char letter, std::unique_ptr<MmcDevice> device);

  char letter() const override { return letter_; }
  bool isPresent() const override { return device_->isPresent(); }
  bool isAllowed() const override { return device_->refusal().empty(); }
  std::string problem() const override;
  std::string devicePath() const override;
  bool isBurner() const override { return device_->isBurner(); }
  bool can(std::uint8_t code) override;

  bool isReady() override;
  void lock(bool locked) override;
  void eject() override;
  void load() override;
  void release() override;
  DiscState state() override;
  void setSpeed(std::int32_t read, std::int32_t write) override;
  std::int32_t writeSpeed(std::int32_t wanted) override;
  std::int32_t readSpeed(std::int32_t wanted) override;

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
  class Blocks;

  /// True when the drive is held and its disc is known.
  bool hold();
  /// Where the newest tree is read; -1 without one.
  std::int64_t newestStart() const;
  /// What tells this disc from all others: the newest volume descriptor. Empty without one.
  std::vector<std::uint8_t> readHead();
  /// Reads from the disc of that report, and from no other.
  std::int64_t readFrom(const MmcReport& disc, std::uint32_t first, std::uint32_t count,
                        std::uint8_t* buffer);

  char letter_;
  std::unique_ptr<MmcDevice> device_;
  std::vector<int> profiles_;  ///< of the drive; empty until they were asked for
  std::string problem_;        ///< why it could not be held
  bool busy_ = false;
  bool erased_ = false;  ///< by this program, and nothing has been written or changed since
  MmcReport report_;     ///< of the disc, as of the last hold
  SessionChain chain_;
  std::vector<std::uint8_t> head_;  ///< of the disc that the readers are of
  SessionReaders readers_;
};

/// A drive for each device node /dev/sr0, /dev/sr1 ... that there may be, with the letters D to U.
/// `calls` outlives them.
std::vector<std::unique_ptr<Drive>> makeMmcDrives(SlowCalls& calls);

}  // namespace korvenal
