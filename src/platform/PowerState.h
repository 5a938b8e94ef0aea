#pragma once

#include <string>

namespace korvenal {

/// Keeps the machine from going to sleep or down under a run. Where the system knows no such wish,
/// nothing happens: a run never fails for it.
class PowerState {
 public:
  virtual ~PowerState() = default;
  /// From here on the machine stays awake, and its end asks first. `why` is what a person reads
  /// then. A second call replaces the first.
  virtual void stayAwake(const std::string& why) = 0;
  virtual void allowSleep() = 0;
};

/// Keeps the machine awake for the time of a scope.
class AwakeScope {
 public:
  AwakeScope(PowerState& power, const std::string& why) : power_(power) { power_.stayAwake(why); }
  ~AwakeScope() { power_.allowSleep(); }
  AwakeScope(const AwakeScope&) = delete;
  AwakeScope& operator=(const AwakeScope&) = delete;

 private:
  PowerState& power_;
};

}  // namespace korvenal
