#pragma once

#include <string>

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that change what outlasts the program: default options and device settings, by the
/// names of their keys.
class SettingCommandGroup {
 public:
  explicit SettingCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doDefaults(const Arguments& arguments);
  ExitCode doShowDefaults();
  ExitCode doDefault(const std::string& key, const std::string& value);
  ExitCode doDevice(const std::string& key, const std::string& value);
  ExitCode doImageDrives(const std::string& key, const std::string& value);
  ExitCode doTakeDevice(const DeviceSettings& changed);
  /// "V" of "V:", empty for "" and "Nil"; nothing for a drive that is not there.
  std::optional<std::string> driveOf(const std::string& value);
  ExitCode badValue(const std::string& key, const std::string& value);

  Session& session_;
};

}  // namespace korvenal::console
