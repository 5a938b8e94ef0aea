#pragma once

#include <string>

#include "platform/Fixed4.h"

namespace korvenal {

/// The one text of a size: whole KB rounded up, "1 KB" at least for anything above 0. With
/// `bigUnits`, MB and GB with one decimal from 1024 of the unit below on.
std::string formatSizeText(Fixed4 bytes, bool bigUnits);

}  // namespace korvenal
