#include "platform/linux/engine/PatientDevice.h"

#include <cerrno>

namespace korvenal {

MmcDevice::Tray PatientDevice::tray() {
  Tray tray = Tray::NotReady;
  run([&] { tray = device_->tray(); });
  return tray;
}

void PatientDevice::openTray() {
  run([&] { device_->openTray(); });
}

void PatientDevice::closeTray() {
  run([&] { device_->closeTray(); });
}

bool PatientDevice::hold(std::string& why) {
  bool held = false;
  std::string reason = why;  // the caller's text may be asked for meanwhile
  run([&] { held = device_->hold(reason); });
  why = reason;
  return held;
}

void PatientDevice::release() {
  if (isHeld()) run([&] { device_->release(); });
}

std::vector<int> PatientDevice::profiles() {
  std::vector<int> profiles;
  run([&] { profiles = device_->profiles(); });
  return profiles;
}

MmcReport PatientDevice::report() {
  MmcReport report;
  run([&] { report = device_->report(); });
  return report;
}

std::int64_t PatientDevice::read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) {
  std::int64_t got = -EBUSY;
  run([&] { got = device_->read(first, count, buffer); });
  return got;
}

void PatientDevice::setSpeed(std::int32_t read, std::int32_t write) {
  run([&] { device_->setSpeed(read, write); });
}

}  // namespace korvenal
