#pragma once

#include <string>
#include <string_view>

namespace korvenal {

/// The date of 14 digits "yyyymmddhhmmss" as it is shown: "yyyy-mm-dd hh:mm". Empty when the text
/// is no such date.
std::string doGetFileDateString(std::string_view digits);

}  // namespace korvenal
