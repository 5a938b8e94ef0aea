#pragma once

#include <atomic>
#include <functional>
#include <thread>

namespace korvenal {

/// Runs the work on a thread of its own and waits for its end; meanwhile `pump` is called on this
/// one, some fifty times a second and not at all when the work is quick. What the work throws, as
/// when memory runs out, is thrown here.
void runAside(const std::function<void()>& work, const std::function<void()>& pump);

/// Keeps the program alive while a drive takes its time. One call is at work at a time: what the
/// pump lets in may find a drive occupied.
class SlowCalls {
 public:
  using Pump = std::function<void()>;

  /// The calling thread is from here on the one that waits and pumps. Without a pump, and on any
  /// other thread, work is done in place.
  void setPump(Pump pump);
  /// A call is waited for, as the thread that waits sees it; the one that works goes on.
  bool isAtWork() const { return atWork_ && std::this_thread::get_id() == thread_; }
  /// Not while a call is at work.
  void run(const std::function<void()>& work);

 private:
  Pump pump_;
  std::thread::id thread_;
  std::atomic<bool> atWork_ = false;  ///< set by that thread alone
};

}  // namespace korvenal
