#pragma once

#include <condition_variable>
#include <mutex>

namespace korvenal::test {

/// Where a slow drive waits until it is told to go on, each time anew.
class Gate {
 public:
  void pass() {
    std::unique_lock lock(mutex_);
    moved_.wait(lock, [this] { return open_; });
    open_ = false;
  }
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    moved_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable moved_;
  bool open_ = false;
};

}  // namespace korvenal::test
