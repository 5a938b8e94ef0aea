#include "platform/linux/engine/SlowCalls.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace korvenal {

namespace {

using namespace std::chrono_literals;

constexpr auto PumpEvery = 20ms;

}  // namespace

void runAside(const std::function<void()>& work, const std::function<void()>& pump) {
  std::mutex mutex;
  std::condition_variable ended;
  bool done = false;
  std::exception_ptr failure;
  std::thread worker([&] {
    try {
      work();
    } catch (...) {
      failure = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    done = true;
    ended.notify_one();
  });
  for (std::unique_lock lock(mutex); !ended.wait_for(lock, PumpEvery, [&] { return done; });) {
    lock.unlock();
    pump();
    lock.lock();
  }
  worker.join();
  if (failure) std::rethrow_exception(failure);
}

void SlowCalls::setPump(Pump pump) {
  pump_ = std::move(pump);
  thread_ = std::this_thread::get_id();
}

void SlowCalls::run(const std::function<void()>& work) {
  if (!pump_ || std::this_thread::get_id() != thread_) {
    work();
    return;
  }
  atWork_ = true;
  runAside(work, pump_);
  atWork_ = false;
}

}  // namespace korvenal
