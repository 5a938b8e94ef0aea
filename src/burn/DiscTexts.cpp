#include "burn/DiscTexts.h"

#include <algorithm>
#include <cmath>

#include "core/SizeText.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t CdBelow = 740'000'000;
constexpr std::int64_t DvdBelow = 4'800'000'000;

bool isPressed(std::uint8_t type) {
  return type == DiscCdRom || type == DiscDvdRom || type == DiscCdRomOther;
}

/// How fast "once" is for a family of discs, and how its speed list goes down from index 4 on.
struct SpeedFamily {
  std::int32_t unit;  ///< KB/s
  std::int64_t listTop;
};
constexpr SpeedFamily CdFamily = {176, 54};
constexpr SpeedFamily DvdFamily = {1385, 22};

bool isDvd(std::uint8_t type) {
  return type >= DiscDvdRom && type <= DiscDvdPlusRDl;
}

/// The multiple to set, 0 to leave the drive at its maximum.
std::int64_t multipleFor(std::int64_t setting, std::int64_t listTop, std::int64_t maximum) {
  const std::int64_t high = maximum / 4 * 3;
  const std::int64_t medium = maximum / 4 * 2;
  const std::int64_t low = maximum / 4;
  switch (setting) {
    case 1:
      return maximum / 2 < high ? high : maximum;
    case 2:
      return medium == 0 ? 2 : medium;
    case 3:
      return low == 0 ? 2 : low;
    default:
      return setting > 3 ? std::min(listTop - (setting - 3) * 2, maximum) : 0;
  }
}

/// "4" or "2.4": a speed that is nearly a whole multiple is told as one.
std::string multipleText(std::int32_t speed, std::int32_t unit) {
  const double multiple = static_cast<double>(speed) / unit;
  return speed % unit < 32 ? std::to_string(std::llround(multiple))
                           : Text::groupedOneDecimal(multiple);
}

}  // namespace

std::string DiscTexts::doGetDiscCapacityName(std::uint8_t type, bool addBlank) const {
  if (isPressed(type)) return {};
  const std::int64_t bytes = engine_.do_GetTotalBlocksOnDisc() * BlockBytes;
  if (bytes >= DvdBelow) return {};
  return std::string(bytes < CdBelow ? "700MB" : "4.7GB") + (addBlank ? " " : "");
}

std::string DiscTexts::discText(std::uint8_t type) const {
  return doGetDiscCapacityName(type, true) + doGetDiscTypeName(type);
}

bool DiscTexts::doIsDiscWritable(std::uint8_t type) const {
  return !isPressed(type) && engine_.do_Writable() > 0;
}

/// Also those that its disk has no room for.
std::int64_t DiscTexts::unusedBlocks() const {
  return std::int64_t{engine_.do_GetFreeBlocksOnDisc()} + engine_.do_GetBlocksWithoutRoom();
}

std::string DiscTexts::roomText() const {
  if (engine_.do_GetBlocksWithoutRoom() == 0) return {};
  return "There is room for " + formatSizeText(bytesOf(engine_.do_GetFreeBlocksOnDisc()), true) +
         " only on the disk where the image of this disc lies.";
}

bool DiscTexts::doIsDiscBlank(std::uint8_t type) const {
  // A formatted DVD+RW tells one session even when nothing is on it.
  const bool plusRw = type == DiscDvdPlusRw;
  if (engine_.do_SessionsOnDisc() != (plusRw ? 1 : 0)) return false;
  if (!plusRw) return true;
  const std::int64_t free = unusedBlocks();
  return free >= 1 && free == engine_.do_GetTotalBlocksOnDisc();
}

std::string DiscTexts::doGetDiscErrorText(Transfer transfer) const {
  switch (engine_.do_GetErrorNumber()) {
    case 0:
      return "Disc may be damaged/corrupted.";
    case 1032:
      return "Drive function failed.";
    case 9216:
      return "Invalid field in disc block.";
    case 14848:
      return transfer == Transfer::Writing ? "Disc writing failed." : "Disc reading failed.";
    default:
      break;
  }
  std::string text = Text::toLower(engine_.do_GetErrorString()) + ".";
  if (text.size() <= 2) return text;
  // The first letter may take more than one byte.
  std::size_t first = 1;
  while (first < text.size() && (static_cast<unsigned char>(text[first]) & 0xC0U) == 0x80U) ++first;
  return Text::toUpper(text.substr(0, first)) + text.substr(first);
}

std::int32_t DiscTexts::speedNow(Transfer transfer) const {
  const std::int32_t speed =
      transfer == Transfer::Writing ? engine_.do_GetWriteSpeed() : engine_.do_GetReadSpeed();
  return std::max(speed, 0);
}

std::string DiscTexts::doSetDriveSpeed(std::uint8_t& type, const SpeedSetting& setting,
                                       Transfer transfer) {
  if (type == DiscNone) type = engine_.do_DiscIs();
  const SpeedFamily& family = isDvd(type) ? DvdFamily : CdFamily;
  engine_.do_SetDeviceSpeed(0, 0);
  const std::int64_t multiple = multipleFor(isDvd(type) ? setting.dvd : setting.cd, family.listTop,
                                            speedNow(transfer) / family.unit);
  if (multiple > 0) {
    const auto speed = static_cast<std::int32_t>(multiple * family.unit);
    engine_.do_SetDeviceSpeed(speed, speed);
  }
  const std::int32_t speed = speedNow(transfer);
  if (speed <= family.unit) return {};
  return "Drive speed set to:  " + multipleText(speed, family.unit) + "x (" +
         Text::grouped(std::int64_t{speed} / 100 * 100) + " KB/s)";
}

std::string DiscTexts::doFormatSize(int mode, bool bigUnits, Fixed4 size) const {
  if (size <= Fixed4(0)) {
    if (mode == FreeOnDisc) size = bytesOf(engine_.do_GetFreeBlocksOnDisc());
    if (mode == UsedOnDisc) size = bytesOf(engine_.do_GetTotalBlocksOnDisc() - unusedBlocks());
    if (mode == TotalOnDisc) size = bytesOf(engine_.do_GetTotalBlocksOnDisc());
  }
  return formatSizeText(size, bigUnits);
}

}  // namespace korvenal
