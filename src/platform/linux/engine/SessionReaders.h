#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "platform/SetIdentity.h"
#include "platform/linux/engine/DiscReader.h"

namespace korvenal {

/// What the volume descriptors of these sessions say, for those that hold a tree.
std::vector<DiscSession> readSessions(BlockReader& disc, const std::vector<std::uint32_t>& starts);

/// The sessions of the disc in a drive, and the readers of the trees in use. All are kept until the
/// disc changes, but for the readers of more sessions than anyone uses at a time.
class SessionReaders {
 public:
  SessionReaders() = default;
  ~SessionReaders() { drop(); }
  SessionReaders(const SessionReaders&) = delete;
  SessionReaders& operator=(const SessionReaders&) = delete;

  /// Nothing until they were kept.
  const std::vector<DiscSession>& sessions() const { return sessions_; }
  void keepSessions(std::vector<DiscSession> sessions) { sessions_ = std::move(sessions); }
  /// True for the newest tree, and for a session that is known.
  bool isKnown(std::optional<std::uint32_t> session) const;

  /// Null when none is kept of that tree.
  std::shared_ptr<DiscReader> find(std::optional<std::uint32_t> session) const;
  /// Null is not kept.
  void keep(std::optional<std::uint32_t> session, std::shared_ptr<DiscReader> reader);
  bool isEmpty() const { return readers_.empty() && sessions_.empty(); }
  /// The disc changes: readers are detached, and nothing is known any more.
  void drop();

 private:
  struct Kept {
    std::optional<std::uint32_t> session;
    std::shared_ptr<DiscReader> reader;
  };
  std::deque<Kept> readers_;  ///< the oldest first
  std::vector<DiscSession> sessions_;
};

}  // namespace korvenal
