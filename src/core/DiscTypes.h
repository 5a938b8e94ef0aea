#pragma once

#include <cstdint>
#include <string>

namespace korvenal {

/// Disc types that a job is planned for; the list index is `comboDiscType`.
inline const std::string DiscTypeTexts[] = {"CD 700MB", "DVD 4.7GB", "DVD+R DL"};

/// The text of a list index; an index outside counts as the nearest one.
inline const std::string& discTypeTextOf(int comboDiscType) {
  constexpr int Last = 2;
  return DiscTypeTexts[comboDiscType < 0 ? 0 : comboDiscType > Last ? Last : comboDiscType];
}

/// The name of a disc type code; empty for a code that has none.
std::string doGetDiscTypeName(std::uint8_t type);

}  // namespace korvenal
