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

/// Brings the libraries for discs up, silent, and down again. They keep state of their own for the
/// whole process, so there is at most one object of this class at a time.
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
