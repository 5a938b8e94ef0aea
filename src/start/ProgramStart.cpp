#include "start/ProgramStart.h"

#include <filesystem>

#include "core/Leftovers.h"
#include "platform/Profile.h"
#include "platform/linux/StandardFolders.h"
#include "platform/linux/engine/ImageDriveSettings.h"

namespace korvenal {

namespace {

/// The drives that are image files, as the settings offer them.
ImageShelf::Options imageDrives(const Workspace& workspace, const std::string& shelf) {
  LinuxFiles files(nullptr);
  return readImageDrives(Profile(files, workspace.gSettingsFile),
                         shelf.empty() ? workspace.applicationFolder + "Discs/" : shelf + "/");
}

/// What a killed run has left. The lock on the application folder is held.
void doTidy(Workspace& workspace, const std::string& shelf) {
  LinuxFiles files(nullptr);
  const std::string wanted = workspace.TempFolder;
  workspace.doCheckTempFolder(files, wanted);
  doClearLeftovers(files, workspace, shelf);
}

}  // namespace

std::optional<ProgramStart> doStartProgram(const StartOptions& options, StartFailure& failure) {
  const StandardFolders folders =
      findStandardFolders({executableFolder(), options.applicationFolder});
  ProgramStart start;
  start.workspace = Workspace::below(folders.application, folders.bin, folders.home);
  start.workspace.TempFolder = folders.temporary;
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
  doTidy(start.workspace, discs.folder);
  start.platform = std::make_unique<LinuxPlatform>(
      LinuxPlatform::Places{.applicationFolder = folders.application, .imageDrives = discs});
  return start;
}

}  // namespace korvenal
