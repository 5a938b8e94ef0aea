#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace korvenal {

/// Destroys large things on a thread of its own: a million small pieces of memory take longer than
/// a window may be kept waiting.
class ReleaseThread {
 public:
  ReleaseThread() = default;
  /// When everything is gone.
  ~ReleaseThread();
  ReleaseThread(const ReleaseThread&) = delete;
  ReleaseThread& operator=(const ReleaseThread&) = delete;

  /// Nobody else may have a share in anything that hangs on the thing. Null is no thing.
  void take(std::shared_ptr<const void> thing);
  /// Until all that was taken is gone.
  void wait();

 private:
  void work(const std::stop_token& stop);

  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::vector<std::shared_ptr<const void>> things_;
  bool atWork_ = false;
  std::jthread thread_;  ///< last: it uses all of the above; started by the first thing
};

}  // namespace korvenal
