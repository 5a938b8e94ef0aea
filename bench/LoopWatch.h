#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

#include "StallTrace.h"

namespace korvenal::bench {

/// Watches how long the event loop of a window is kept waiting: a timer of one millisecond tells
/// the time since it last came.
class LoopWatch {
 public:
  LoopWatch() {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { doTick(); });
    timer_.start(1);
  }

  /// Does the work, lets the window show it, and prints how long all took and the longest wait.
  void measure(const char* what, const std::function<void()>& work) {
    doSettle();
    longest_ = {};
    const Clock::time_point start = last_ = Clock::now();
    trace_.setArmed(true);
    work();
    doSettle();
    doTick();
    trace_.setArmed(false);
    std::printf("%-34s %8.1f ms, longest wait %7.1f ms\n", what, milliseconds(last_ - start),
                milliseconds(longest_));
    std::fflush(stdout);
    worst_ = std::max(worst_, longest_);
  }
  double worstMilliseconds() const { return milliseconds(worst_); }

 private:
  using Clock = std::chrono::steady_clock;

  static double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
  }
  void doTick() {
    const Clock::time_point now = Clock::now();
    longest_ = std::max(longest_, now - last_);
    last_ = now;
    trace_.doBeat();
  }
  /// Until nothing is left to lay out or paint.
  static void doSettle() {
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
  }

  QTimer timer_;
  Clock::time_point last_;
  Clock::duration longest_{};
  Clock::duration worst_{};
  StallTrace trace_;
};

}  // namespace korvenal::bench
