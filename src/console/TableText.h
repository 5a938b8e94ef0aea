#pragma once

#include <string>

#include "platform/Table.h"

namespace korvenal::console {

/// The rows and columns of a table that are not hidden, in columns for the eye, the header row
/// first. Control characters are shown escaped.
std::string tableText(const Table& table);

}  // namespace korvenal::console
