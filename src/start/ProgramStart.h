#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/Workspace.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/StandardFolders.h"

namespace korvenal {

/// What a person may name at the start; empty ones are the usual places.
struct StartOptions {
  std::string applicationFolder;
  std::string shelf;  ///< folder of the image discs, without '/' at the end
};

/// A start of the program on this machine: its folders are settled, the lock on the application
/// folder is held, what a killed run left is cleared, and the platform is up. Both front ends begin
/// with one and keep it to their end.
struct ProgramStart {
  Workspace workspace;
  std::unique_ptr<InstanceLock> lock;
  std::unique_ptr<OwnTemporaryFolder> temporary;  ///< goes before the lock does
  std::unique_ptr<LinuxPlatform> platform;
};

/// Why there is none.
struct StartFailure {
  bool alreadyRunning = false;
  std::string text;  ///< a sentence for the person
};

/// Nothing, with the reason told, when the application folder cannot be made or another program
/// is at work on it.
std::optional<ProgramStart> doStartProgram(const StartOptions& options, StartFailure& failure);

}  // namespace korvenal
