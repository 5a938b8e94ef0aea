#include "platform/linux/LoginPowerState.h"

#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <cstdint>

namespace korvenal {

namespace {

constexpr std::uint64_t LongestCallMicroseconds = 2'000'000;

/// The descriptor that holds the lock; none when the service is not there or refuses.
Descriptor askForLock(const std::string& why) {
  sd_bus* bus = nullptr;
  if (sd_bus_open_system(&bus) < 0) return {};
  sd_bus_set_method_call_timeout(bus, LongestCallMicroseconds);
  sd_bus_message* answer = nullptr;
  int shared = -1;
  Descriptor lock;
  if (sd_bus_call_method(bus, "org.freedesktop.login1", "/org/freedesktop/login1",
                         "org.freedesktop.login1.Manager", "Inhibit", nullptr, &answer, "ssss",
                         "sleep:shutdown", "Korvenal to DVD", why.c_str(), "block") >= 0 &&
      sd_bus_message_read(answer, "h", &shared) >= 0) {
    // The answer owns the one that it holds.
    lock = Descriptor(::fcntl(shared, F_DUPFD_CLOEXEC, 3));
  }
  sd_bus_message_unref(answer);
  sd_bus_flush_close_unref(bus);
  return lock;
}

}  // namespace

void LoginPowerState::stayAwake(const std::string& why) {
  allowSleep();
  asking_ = std::thread([this, why] { lock_ = askForLock(why); });
}

void LoginPowerState::allowSleep() {
  if (asking_.joinable()) asking_.join();
  lock_.reset();
}

}  // namespace korvenal
