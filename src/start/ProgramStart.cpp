#include "start/ProgramStart.h"

#include <csignal>
#include <filesystem>

#include "core/Leftovers.h"
#include "platform/Paths.h"
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

/// A new application folder is for the user alone, and so is the usual one. A folder that the user
/// named, or put the program into, stays as it is.
bool makeApplicationFolder(const StartOptions& options, const std::string& folder,
                           StartFailure& failure) {
  const bool isUsual = options.applicationFolder.empty() && folder != executableFolder();
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    if (LinuxFiles(nullptr).doCreateFolderPath(folder)) return true;
    std::filesystem::create_directories(folder, error);  // tells why
    if (error) failure.text = folder + ": " + error.message();
    return !error;
  }
  // One that another user owns cannot be changed, but may serve all the same.
  if (isUsual) makePrivateFolder(std::string(Paths::withoutEnd(folder)));
  return true;
}

}  // namespace

std::optional<ProgramStart> doStartProgram(const StartOptions& options, StartFailure& failure) {
  // A reader of the output that goes away is no reason to leave a disc half burned.
  std::signal(SIGPIPE, SIG_IGN);
  const StandardFolders folders =
      findStandardFolders({executableFolder(), options.applicationFolder});
  ProgramStart start;
  start.workspace = Workspace::below(folders.application, folders.bin, folders.home);
  if (!makeApplicationFolder(options, folders.application, failure)) return {};
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
