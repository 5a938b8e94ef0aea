#include "platform/linux/engine/SessionChain.h"

#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr std::size_t MostSessions = 4096;

}  // namespace

SessionChain readSessionChain(BlockReader& disc) {
  SessionChain chain;
  const auto newest = readVolumeHead(disc, 0);
  if (!newest) return chain;
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
