#include "platform/linux/engine/SessionChain.h"

#include <algorithm>
#include <array>

#include "platform/BurnEngine.h"
#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr std::size_t MostSessions = 4096;
constexpr std::uint32_t UdfAnchor = 256;

bool isBlockEmpty(BlockReader& disc, std::uint32_t block) {
  std::array<std::uint8_t, BlockBytes> bytes{};
  return disc.read(block, 1, bytes.data()) >= 0 &&
         std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace

bool isHeadEmpty(BlockReader& disc) {
  for (std::uint32_t block = 0; block < SessionChain::HeadBlocks; ++block)
    if (!isBlockEmpty(disc, block)) return false;
  return true;
}

SessionChain readSessionChain(BlockReader& disc) {
  SessionChain chain;
  const auto newest = readVolumeHead(disc, 0);
  if (!newest) {
    chain.holdsOther = !isHeadEmpty(disc) || !isBlockEmpty(disc, UdfAnchor);
    return chain;
  }
  const std::int64_t end = newest->blocks;
  for (std::int64_t start = chain.next(); start < end && chain.starts.size() < MostSessions;
       start = chain.next()) {
    const auto session = readVolumeHead(disc, static_cast<std::uint32_t>(start));
    if (!session) break;
    chain.starts.push_back(static_cast<std::uint32_t>(start));
    chain.end = start + session->blocks;
  }
  if (chain.starts.empty()) chain.starts.push_back(0);
  // What block 0 tells is the truth; what may lie behind it is left from earlier times.
  chain.end = end;
  return chain;
}

}  // namespace korvenal
