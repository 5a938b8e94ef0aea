#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DiscType.h"

namespace korvenal {

/// How a type of disc behaves.
namespace DiscTypes {

/// Can be bought blank.
bool isRecordable(std::uint8_t type);
bool isRewritable(std::uint8_t type);
/// Every block can be written again at any time; nothing is ever closed.
bool isOverwritable(std::uint8_t type);
/// Blocks on a real disc of the type (a CD of 80 minutes); 0 for pressed discs.
std::int64_t capacityBlocks(std::uint8_t type);
/// KB/s of a common drive with such a disc.
std::int32_t maxSpeed(std::uint8_t type);

}  // namespace DiscTypes

/// What an ISO image cannot tell of the disc that it stands for. It is kept beside the image, in a
/// text file of `key=value` lines in any order below a first line with the format's name:
///
///     KORVENAL-DISC 1
///     type=11            disc type code
///     capacity=2295104   blocks
///     formatted=1        0: a DVD+RW as it comes from the factory
///     closed=0           1: takes no more data
///     writing=0          1: a burn has begun and its end was never recorded
///     sessions=32,1504   first block of each complete session
///     end=2816           first block behind all that was written
///     damaged=0          1: a burn on a disc that forgives nothing has failed
///
/// Unknown keys are ignored. A file that breaks these rules counts as none.
struct DiscProfile {
  std::uint8_t type = DiscNone;
  std::int64_t capacity = 0;  ///< blocks
  bool formatted = true;
  bool closed = false;
  bool writing = false;
  bool damaged = false;
  std::vector<std::uint32_t> sessions;
  std::int64_t end = 0;

  /// A new disc; `blocks` 0 is the capacity of real ones.
  static DiscProfile blank(std::uint8_t type, std::int64_t blocks);
  /// An image without a profile: a pressed disc with one session.
  static DiscProfile pressed(std::int64_t blocks);
  static std::optional<DiscProfile> parse(std::string_view text);
  std::string toText() const;

  /// Takes data now, without an erase.
  bool isAppendable() const;
  int sessionsTold() const;  ///< as drives count them
  std::int64_t freeBlocks() const;
  /// Where the next session would begin.
  std::int64_t nextSession() const;
  /// Back to a blank disc, formatted.
  void erase();
  /// A burn whose end was never recorded has failed. Also called after a failed burn.
  void failWriting();
};

}  // namespace korvenal
