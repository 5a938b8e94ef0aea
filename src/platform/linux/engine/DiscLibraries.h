#pragma once

#include <string>
#include <vector>

namespace korvenal {

/// A message that a library queued.
struct LibraryMessage {
  int code = 0;     ///< the library's own number
  int osError = 0;  ///< errno, 0 for none
  std::string text;
};

/// Brings the libraries for discs up, silent, and with the last object down again: they keep state
/// of their own for the whole process. Objects are made and destroyed on one thread.
class DiscLibraries {
 public:
  DiscLibraries();
  ~DiscLibraries();
  DiscLibraries(const DiscLibraries&) = delete;
  DiscLibraries& operator=(const DiscLibraries&) = delete;

  bool isReady() const { return ready_; }

  /// Takes all queued messages. Those that tell of a failure come back, the oldest first.
  static std::vector<LibraryMessage> takeFailures();
  /// Takes the messages about the burn: true when the one that ends a burn's worker was among
  /// them; failures go to `failures`.
  static bool takeBurnMessages(std::vector<LibraryMessage>& failures);

 private:
  bool ready_ = false;
};

}  // namespace korvenal
