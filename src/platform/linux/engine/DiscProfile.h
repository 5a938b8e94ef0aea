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

/// What goes wrong with a disc on demand. Negative numbers and zeros mean: nothing.
struct DiscFaults {
  std::int64_t prepare = 0;     ///< not 0: no track can be prepared for it
  std::int64_t burnAfter = -1;  ///< a burn fails when so many blocks of it are written
  std::int64_t erase = 0;       ///< not 0: it cannot be erased
  std::int64_t number = 0;      ///< the error number of the above; 0: the usual one
  std::int64_t badBlock = -1;   ///< this block and those behind it cannot be read
  std::int64_t pullAfter = -1;  ///< it leaves the drive when so many blocks have been read
  std::int64_t notReady = 0;    ///< the drive is still busy with it for so many questions
};

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
/// A disc that shall go wrong, for tests, has some of these besides (see DiscFaults):
///
///     fail-prepare=1, fail-burn=BLOCKS, fail-erase=1, fail-number=NUMBER, bad-block=BLOCK,
///     pull-after=BLOCKS, not-ready=COUNT
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
  DiscFaults faults;

  /// A new disc; `blocks` 0 is the capacity of real ones.
  static DiscProfile blank(std::uint8_t type, std::int64_t blocks);
  /// An image without a profile: a pressed disc with one session.
  static DiscProfile pressed(std::int64_t blocks);
  static std::optional<DiscProfile> parse(std::string_view text);
  std::string toText() const;

  /// Takes data now, without an erase.
  bool isAppendable() const;
  /// As drives count them: a formatted DVD+RW has one, whatever it holds.
  int sessionsTold() const;
  std::int64_t freeBlocks() const;
  /// Where the next session would begin.
  std::int64_t nextSession() const;
  /// Back to a blank disc, formatted.
  void erase();
  /// A burn whose end was never recorded has failed. Also called after a failed burn.
  void failWriting();
};

}  // namespace korvenal
