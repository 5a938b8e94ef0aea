#pragma once

#include <cstdint>
#include <string>

#include "platform/ImageTrays.h"

namespace korvenal::console {

/// The code of a disc type that a blank disc can have, by its name ("CD-R", case ignored) or its
/// number; 0 for none.
std::uint8_t discTypeCode(const std::string& name);
/// The names of these types: "CD-R, CD-RW, ...".
std::string discTypeNames();
/// "CD-R, 359849 blocks, Backup #1, 1 session, closed".
std::string discDescription(const ImageDisc& disc);
/// The letter of "V", "v:" or "V:\"; 0 for anything else.
char driveLetter(const std::string& text);

}  // namespace korvenal::console
