#include "core/DiscTypes.h"

#include <array>

namespace korvenal {

namespace {

constexpr std::array<const char*, 16> TypeNames = {
    "",       "CD-ROM", "CD-R",   "CD-RW", "DVD-ROM",  "DVD-R",  "DVD-RAM", "DVD-RW",
    "DVD-RW", "DVD-RW", "DVD+RW", "DVD+R", "DVD+R DL", "CD-ROM", "CD-R",    "CD-RW"};

}  // namespace

std::string doGetDiscTypeName(std::uint8_t type) {
  return type < TypeNames.size() ? TypeNames[type] : "";
}

}  // namespace korvenal
