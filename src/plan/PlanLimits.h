#pragma once

#include <algorithm>
#include <cstdint>

namespace korvenal {

// The measures of a plan, in bytes unless their names say otherwise.
inline constexpr int MaxDiscs = 100;
inline constexpr std::int64_t DiscReserve = 16777216;  ///< counted as used at the start of a disc
inline constexpr std::int64_t EntryOverhead = 4096;    ///< added for every row on a disc
inline constexpr std::int64_t SplitMargin = 8192;      ///< kept free when a file is cut
inline constexpr std::int64_t SectorSize = 2048;  ///< a piece that fills a disc is whole sectors
inline constexpr std::int64_t PieceSize = 1073741824;  ///< of a file cut for its file system
inline constexpr std::int64_t PieceMax = 1084227584;   ///< a rest up to this stays one piece

/// Lines of an index with its header, and bytes of its text: more is not written, and not read.
inline constexpr int MaxIndexLines = 2'000'000;
inline constexpr std::int64_t MaxIndexBytes = 1LL << 30;

/// Bytes of text that a packed index may hold. Hardly any index packs better than this; a bomb
/// does.
constexpr std::int64_t mostIndexBytesIn(std::int64_t packedBytes) {
  constexpr std::int64_t MaxRatio = 128;
  constexpr std::int64_t SmallTextBytes = 16LL << 20;
  return std::min(MaxIndexBytes, SmallTextBytes + MaxRatio * packedBytes);
}

}  // namespace korvenal
