#pragma once

#include <cstdint>
#include <string>

#include "core/DiscTypes.h"
#include "platform/BurnEngine.h"
#include "platform/DiscType.h"
#include "platform/Fixed4.h"

namespace korvenal {

/// The speeds wanted of a drive, as indices of the speed lists of the device settings.
struct SpeedSetting {
  std::int64_t dvd = 0;
  std::int64_t cd = 0;
};

/// What the disc and the drive at hand are, in the words of the program. Everything is asked of
/// the selected device at the moment of the call.
class DiscTexts {
 public:
  enum class Transfer { Reading, Writing };
  /// What doFormatSize measures when it is given no size.
  enum SizeMode : int { FreeOnDisc = 0, UsedOnDisc = 1, TotalOnDisc = 2, GivenSize = 3 };

  explicit DiscTexts(BurnEngine& engine) : engine_(engine) {}

  /// "700MB" or "4.7GB", with one blank behind it when asked; empty for pressed and large discs.
  std::string doGetDiscCapacityName(std::uint8_t type, bool addBlank) const;
  /// Capacity and type: "4.7GB DVD-R".
  std::string discText(std::uint8_t type) const;
  bool doIsDiscWritable(std::uint8_t type) const;
  bool doIsDiscBlank(std::uint8_t type) const;
  /// One sentence for the last error of the engine. There is one even for error number 0.
  std::string doGetDiscErrorText(Transfer transfer) const;
  /// Sets the speed of the drive and tells which one it took; empty when the drive tells none.
  /// A type of 0 is asked of the drive and handed back.
  std::string doSetDriveSpeed(std::uint8_t& type, const SpeedSetting& setting, Transfer transfer);
  /// The text of a size in bytes. Without a size (0 or below) the modes below GivenSize take it
  /// from the disc.
  std::string doFormatSize(int mode, bool bigUnits, Fixed4 size) const;
  /// A sentence about an image whose disk has less room than the disc; empty when it has as much.
  std::string roomText() const;

 private:
  Fixed4 bytesOf(std::int64_t blocks) const { return Fixed4(blocks * BlockBytes); }
  std::int32_t speedNow(Transfer transfer) const;
  std::int64_t unusedBlocks() const;

  BurnEngine& engine_;
};

}  // namespace korvenal
