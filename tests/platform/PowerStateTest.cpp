#include "platform/linux/LoginPowerState.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "support/TempDir.h"

namespace korvenal {
namespace {

/// A message bus of its own with a login service on it that hands out locks.
class LoginService {
 public:
  explicit LoginService(const std::string& folder) {
    const std::string address = "unix:path=" + folder + "bus";
    int ready[2];
    if (pipe(ready) != 0) return;
    bus_ = fork();
    if (bus_ == 0) {
      const std::string print = "--print-address=" + std::to_string(ready[1]);
      execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile", print.c_str(),
             ("--address=" + address).c_str(), nullptr);
      _exit(127);
    }
    close(ready[1]);
    char printed[256];
    isUp_ = read(ready[0], printed, sizeof printed) > 0;
    close(ready[0]);
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
    EXPECT_EQ(pipe(lock_), 0);
    server_ = std::thread([this] { serve(); });
    while (isUp_ && !named_) std::this_thread::yield();
  }
  ~LoginService() {
    ended_ = true;
    server_.join();
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    kill(bus_, SIGTERM);
    waitpid(bus_, nullptr, 0);
    close(lock_[0]);
    if (lock_[1] >= 0) close(lock_[1]);
  }
  LoginService(const LoginService&) = delete;
  LoginService& operator=(const LoginService&) = delete;

  /// The bus has started, and the service is on it.
  bool isUp() const { return isUp_; }
  /// Waits until nobody holds the lock that was handed out.
  bool isReleased() const {
    char byte = 0;
    return read(lock_[0], &byte, 1) == 0;
  }
  bool isHeld() const {
    pollfd end{.fd = lock_[0], .events = POLLIN, .revents = 0};
    return asked_ && poll(&end, 1, 0) == 0;
  }
  bool wasAsked() const { return asked_; }
  const std::string& wish() const { return wish_; }

 private:
  static int onInhibit(sd_bus_message* call, void* self, sd_bus_error*) {
    auto& service = *static_cast<LoginService*>(self);
    const char *what = "", *who = "", *why = "", *mode = "";
    sd_bus_message_read(call, "ssss", &what, &who, &why, &mode);
    service.wish_ = std::string(what) + "|" + who + "|" + why + "|" + mode;
    const int result = sd_bus_reply_method_return(call, "h", service.lock_[1]);
    sd_bus_flush(sd_bus_message_get_bus(call));
    close(service.lock_[1]);
    service.lock_[1] = -1;
    service.asked_ = true;
    return result;
  }

  void serve() {
    static constexpr sd_bus_vtable Methods[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Inhibit", "ssss", "h", onInhibit, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
    constexpr std::uint64_t LookAgainMicroseconds = 10'000;
    sd_bus* bus = nullptr;
    isUp_ = isUp_ && sd_bus_open_system(&bus) >= 0;
    if (!isUp_) return;
    sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/login1",
                             "org.freedesktop.login1.Manager", Methods, this);
    isUp_ = sd_bus_request_name(bus, "org.freedesktop.login1", 0) >= 0;
    named_ = true;
    while (!ended_)
      if (sd_bus_process(bus, nullptr) == 0) sd_bus_wait(bus, LookAgainMicroseconds);
    sd_bus_flush_close_unref(bus);
  }

  pid_t bus_ = -1;
  int lock_[2] = {-1, -1};
  std::string wish_;
  std::atomic<bool> isUp_ = false;
  std::atomic<bool> named_ = false;
  std::atomic<bool> asked_ = false;
  std::atomic<bool> ended_ = false;
  std::thread server_;
};

TEST(PowerStateTest, TheLoginServiceHoldsSleepOffUntilTheEndOfTheScope) {
  const test::TempDir temp;
  LoginService login(temp.path());
  ASSERT_TRUE(login.isUp()) << "no dbus-daemon?";
  LoginPowerState power;
  {
    const AwakeScope awake(power, "A backup is at work.");
    while (!login.wasAsked()) std::this_thread::yield();
    EXPECT_TRUE(login.isHeld());
    EXPECT_EQ(login.wish(), "sleep:shutdown|Korvenal to DVD|A backup is at work.|block");
  }
  EXPECT_TRUE(login.isReleased());
}

TEST(PowerStateTest, WithoutAServiceNothingHappens) {
  const test::TempDir temp;
  ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + (temp / "nobody")).c_str(), 1);
  LoginPowerState power;
  power.stayAwake("A backup is at work.");
  power.stayAwake("Another.");
  power.allowSleep();
  ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

}  // namespace
}  // namespace korvenal
