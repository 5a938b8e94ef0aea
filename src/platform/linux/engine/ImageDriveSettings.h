#pragma once

#include <string>

#include "platform/Profile.h"
#include "platform/linux/engine/ImageShelf.h"

namespace korvenal {

/// The image drives as section ImageDrives of the settings offers them; `folder` is the shelf.
///
///     Drives   how many there are, 1 to 5
///     Feeder   1: discs are put in without asking
///     Drive1 to Drive5   what the drive writes: "DL" (all discs, the default), "DVD" (all but
///                        discs of two layers), "CD" or "ROM" (none)
ImageShelf::Options readImageDrives(const Profile& profile, const std::string& folder);

}  // namespace korvenal
