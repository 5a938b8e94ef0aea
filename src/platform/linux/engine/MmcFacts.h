#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/engine/Drive.h"
#include "platform/linux/engine/SessionChain.h"

namespace korvenal {

/// The kinds of discs as drives number them.
enum MmcProfile : int {
  MmcCdRom = 0x08,
  MmcCdR = 0x09,
  MmcCdRw = 0x0a,
  MmcDvdRom = 0x10,
  MmcDvdR = 0x11,
  MmcDvdRam = 0x12,
  MmcDvdRwOverwrite = 0x13,
  MmcDvdRwSequential = 0x14,
  MmcDvdRDl = 0x15,
  MmcDvdRDlJump = 0x16,
  MmcDvdPlusRw = 0x1a,
  MmcDvdPlusR = 0x1b,
  MmcDvdPlusRDl = 0x2b,
};

/// What the burning library reports of a drive and its disc, in numbers.
struct MmcReport {
  enum class Medium { None, Blank, Appendable, Full, Unsuitable };
  enum class Format { Unknown, Unformatted, Formatted };

  int profile = 0;
  Medium medium = Medium::None;
  bool erasable = false;
  int sessions = 0;               ///< complete ones
  std::int64_t freeBlocks = 0;    ///< that can still be written
  std::int64_t nextBlock = 0;     ///< the next one to be written
  std::int64_t lastSession = -1;  ///< first block of it; -1 for none
  std::int64_t readableBlocks = 0;
  Format format = Format::Unknown;
  std::int64_t formatBlocks = 0;      ///< size of the format; the largest possible without one
  std::vector<int> writeSpeeds = {};  ///< KB/s, in any order
  std::vector<int> readSpeeds = {};
  std::vector<std::uint32_t> sessionStarts = {};  ///< first blocks of the complete ones, in order

  bool operator==(const MmcReport&) const = default;
};

/// How an erase is done.
enum class EraseKind { Blank, Format, ClearHead, ClearAll };

/// What is made of the reports of real drives. All of it is pure.
namespace MmcFacts {

/// 0 for discs that this program does not know.
std::uint8_t discTypeOf(int profile);
/// Every block can be written again at any time; sessions are then a matter of trees alone.
bool isOverwritable(int profile);
bool isCd(int profile);
/// `chain` counts on overwritable discs alone.
DiscState stateOf(const MmcReport& report, const SessionChain& chain);
TrackPlace placeOf(const MmcReport& report, const SessionChain& chain);
/// First blocks of the sessions, the oldest first.
std::vector<std::uint32_t> sessionStarts(const MmcReport& report, const SessionChain& chain);
EraseKind eraseKindOf(const MmcReport& report, bool quick);

/// Does a drive with these profiles answer the capability code, 13 to 18?
bool can(std::uint8_t code, const std::vector<int>& profiles);
/// What a drive makes of a wish: the highest speed that is not above it, else the lowest; 0 wishes
/// for the highest. 0 without speeds.
std::int32_t speedFor(std::int32_t wanted, const std::vector<int>& speeds);

/// "SCSI#CDROM&VEN_x&PROD_y&REV_z#sr0".
std::string devicePathOf(std::string_view vendor, std::string_view model, std::string_view revision,
                         std::string_view node);
/// The system's own table of optical drives: does the one of that name write discs? Nothing when
/// it is not in the table.
std::optional<bool> writesDiscs(std::string_view table, std::string_view node);

/// A drive's refusal in a message of the library, "... [3 0C 00] Write error".
struct Sense {
  int number = 0;  ///< code and qualifier in one: 0x0C00
  std::string text;
};
std::optional<Sense> senseOf(std::string_view message);

}  // namespace MmcFacts

}  // namespace korvenal
