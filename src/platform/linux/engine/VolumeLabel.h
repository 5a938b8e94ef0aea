#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/SetIdentity.h"
#include "platform/linux/engine/BlockReader.h"

namespace korvenal {

/// What the volume descriptors say of a tree that begins at block `start`.
struct VolumeHead {
  std::string label;
  std::uint32_t blocks = 0;  ///< size of the volume as the tree tells it
  SetIdentity identity;      ///< of the backup that the tree was burned for
};

/// Reads the volume descriptors of ISO 9660. Nothing when there is none. The label comes from the
/// Joliet descriptor when the primary one could not hold its characters.
std::optional<VolumeHead> readVolumeHead(BlockReader& disc, std::uint32_t start);

}  // namespace korvenal
