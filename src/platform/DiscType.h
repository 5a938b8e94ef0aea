#pragma once

#include <cstdint>

namespace korvenal {

/// The disc type codes of the engine, as far as decisions depend on them.
enum DiscType : std::uint8_t {
  DiscNone = 0,  ///< no disc, or one that cannot be identified
  DiscCdRom = 1,
  DiscCdR = 2,
  DiscCdRw = 3,
  DiscDvdRom = 4,
  DiscDvdR = 5,
  DiscDvdRam = 6,
  DiscDvdRwRestricted = 7,
  DiscDvdRwAny = 8,
  DiscDvdRw = 9,
  DiscDvdPlusRw = 10,
  DiscDvdPlusR = 11,
  DiscDvdPlusRDl = 12,
  DiscCdRomOther = 13,
};

}  // namespace korvenal
