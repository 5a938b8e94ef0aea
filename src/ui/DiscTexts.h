#pragma once

#include <QString>
#include <span>

#include "platform/ImageTrays.h"

namespace korvenal::ui {

/// The types that a blank disc can have.
std::span<const std::uint8_t> blankDiscTypes();
QString discTypeText(std::uint8_t type);
/// "DVD-R, blank, 4.4 GB", "CD-R, Backup #1".
QString discDescription(const ImageDisc& disc);

}  // namespace korvenal::ui
