#include "platform/linux/engine/ReleaseThread.h"

#include <utility>

namespace korvenal {

ReleaseThread::~ReleaseThread() {
  wait();
}

void ReleaseThread::take(std::shared_ptr<const void> thing) {
  if (!thing) return;
  const std::lock_guard lock(mutex_);
  things_.push_back(std::move(thing));
  if (!thread_.joinable())
    thread_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
  changed_.notify_all();
}

void ReleaseThread::wait() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return things_.empty() && !atWork_; });
}

void ReleaseThread::work(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (changed_.wait(lock, stop, [this] { return !things_.empty(); })) {
    std::vector<std::shared_ptr<const void>> things = std::exchange(things_, {});
    atWork_ = true;
    lock.unlock();
    things.clear();
    lock.lock();
    atWork_ = false;
    changed_.notify_all();
  }
}

}  // namespace korvenal
