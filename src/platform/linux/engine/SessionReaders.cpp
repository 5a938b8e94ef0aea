#include "platform/linux/engine/SessionReaders.h"

#include <algorithm>

#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr std::size_t MostReaders = 4;

}  // namespace

std::vector<DiscSession> readSessions(BlockReader& disc, const std::vector<std::uint32_t>& starts) {
  std::vector<DiscSession> sessions;
  for (const std::uint32_t start : starts)
    if (const auto head = readVolumeHead(disc, start))
      sessions.push_back({start, head->label, head->identity});
  return sessions;
}

bool SessionReaders::isKnown(std::optional<std::uint32_t> session) const {
  return !session || std::any_of(sessions_.begin(), sessions_.end(),
                                 [&](const DiscSession& one) { return one.start == *session; });
}

std::shared_ptr<DiscReader> SessionReaders::find(std::optional<std::uint32_t> session) const {
  for (const Kept& kept : readers_)
    if (kept.session == session) return kept.reader;
  return nullptr;
}

void SessionReaders::keep(std::optional<std::uint32_t> session,
                          std::shared_ptr<DiscReader> reader) {
  if (!reader) return;
  if (readers_.size() >= MostReaders) {
    readers_.front().reader->detach();
    readers_.pop_front();
  }
  readers_.push_back({session, std::move(reader)});
}

void SessionReaders::drop() {
  for (const Kept& kept : readers_) kept.reader->detach();
  readers_.clear();
  sessions_.clear();
}

}  // namespace korvenal
