#include "start/ProgramStart.h"

#include <csignal>
#include <filesystem>

#include "core/Leftovers.h"
#include "platform/Profile.h"
#include "platform/linux/engine/ImageDriveSettings.h"

namespace korvenal {

namespace {

/// The drives that are image files, as the settings offer them.
ImageShelf::Options imageDrives(const Workspace& workspace, const std::string& shelf) {
  LinuxFiles files(nullptr);
  return readImageDrives(Profile(files, workspace.gSettingsFile),
                         shelf.empty() ? workspace.applicationFolder + "Discs/" : shelf + "/");
}

/// The temporary folder, cleared of what a killed run has left. Without the lock another program
/// may be at work in it, so nothing is cleared.
void doSettleTemporaryFolder(ProgramStart& start, const std::string& path,
                             const std::string& shelf) {
  LinuxFiles files(nullptr);
  start.temporary = std::make_unique<OwnTemporaryFolder>(path);
  start.workspace.doCheckTempFolder(files, start.temporary->path());
  if (start.lock->isHeld()) doClearLeftovers(files, start.workspace, shelf);
}

}  // namespace

std::optional<ProgramStart> doStartProgram(const StartOptions& options, StartFailure& failure) {
  // A reader of the output that goes away is no reason to leave a disc half burned.
  std::signal(SIGPIPE, SIG_IGN);
  const StandardFolders folders =
      findStandardFolders({executableFolder(), options.applicationFolder});
  ProgramStart start;
  start.workspace = Workspace::below(folders.application, folders.bin, folders.home);
  std::error_code error;
  std::filesystem::create_directories(folders.application, error);
  if (error) {
    failure.text = folders.application + ": " + error.message();
    return {};
  }
  start.lock = std::make_unique<InstanceLock>(folders.application);
  if (!start.lock->isFirst()) {
    failure = {.alreadyRunning = true, .text = gProductName + " is already running."};
    return {};
  }
  const ImageShelf::Options discs = imageDrives(start.workspace, options.shelf);
  doSettleTemporaryFolder(start, folders.temporary, discs.folder);
  start.platform = std::make_unique<LinuxPlatform>(
      LinuxPlatform::Places{.applicationFolder = folders.application, .imageDrives = discs});
  return start;
}

}  // namespace korvenal
