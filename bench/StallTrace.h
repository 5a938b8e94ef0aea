#pragma once

#include <execinfo.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace korvenal::bench {

/// Tells where a thread is while it keeps its event loop waiting: after as many milliseconds
/// without a sign of life as STALL_TRACE says, its stack is printed to the error stream, and again
/// after every quarter more (addr2line reads it). Without that variable it does nothing.
class StallTrace {
 public:
  /// Watches the thread that makes it.
  StallTrace() : watched_(::pthread_self()) {
    const char* limit = std::getenv("STALL_TRACE");
    if (limit == nullptr) return;
    limit_ = std::chrono::milliseconds(std::atoi(limit));
    void* first[1];
    ::backtrace(first, 1);  // loads what the handler may not load
    std::signal(SIGUSR1, [](int) {
      void* frames[MostFrames];
      ::backtrace_symbols_fd(frames, ::backtrace(frames, MostFrames), STDERR_FILENO);
      constexpr char End[] = "--\n";
      if (::write(STDERR_FILENO, End, sizeof End - 1) < 0) return;
    });
    watcher_ = std::jthread([this](const std::stop_token& stop) { doWatch(stop); });
  }

  /// A sign of life of the watched thread.
  void doBeat() { ++beats_; }
  /// Whether a silence means anything now.
  void setArmed(bool armed) { armed_ = armed; }

 private:
  static constexpr int MostFrames = 40;

  void doWatch(const std::stop_token& stop) {
    using Clock = std::chrono::steady_clock;
    unsigned seen = 0;
    int told = 0;
    for (Clock::time_point last = Clock::now(); !stop.stop_requested();
         std::this_thread::sleep_for(std::chrono::milliseconds(2))) {
      if (const unsigned beats = beats_; beats != seen || !armed_) {
        seen = beats;
        last = Clock::now();
        told = 0;
      } else if (Clock::now() - last >= limit_ + told * limit_ / 4) {
        ::pthread_kill(watched_, SIGUSR1);
        ++told;
      }
    }
  }

  pthread_t watched_;
  std::chrono::milliseconds limit_{};
  std::atomic<unsigned> beats_ = 0;
  std::atomic<bool> armed_ = false;
  std::jthread watcher_;
};

}  // namespace korvenal::bench
