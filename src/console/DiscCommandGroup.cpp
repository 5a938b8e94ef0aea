#include "console/DiscCommandGroup.h"

#include <limits>

#include "console/DiscKinds.h"
#include "device/HandFeeder.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

/// The smallest disc that a run could use for anything.
constexpr int LeastBlocks = 1;
constexpr int MostBlocks = std::numeric_limits<int>::max();

std::string trayText(const ImageTrays& trays, char letter) {
  return std::string(1, letter) + ": " + discDescription(trays.discIn(letter)) +
         (trays.isOpen(letter) ? " (tray open)" : "");
}

}  // namespace

Commands DiscCommandGroup::commands() {
  constexpr int MostArguments = 4;
  return {
      {"drives", "", "lists the drives", 0, 0, [this](const Arguments&) { return doDrives(); }},
      {"disc", "list | new DRIVE TYPE [BLOCKS] | insert DRIVE FILE | eject DRIVE",
       "serves image drives; types: " + discTypeNames(), 1, MostArguments,
       [this](const Arguments& a) { return doDisc(a); }},
  };
}

ExitCode DiscCommandGroup::doDrives() {
  DriveDiscovery& drives = session_.main.drives;
  drives.BurnerCount = drives.doInitBurner();
  drives.DriveCount = drives.doListBurners();
  const DeviceSettings& chosen = session_.main.deviceSettings;
  for (const std::string& name : drives.DriveNames) {
    if (name.empty()) continue;
    const bool inUse = chosen.DriveLetters.find(name.substr(0, 2)) != std::string::npos;
    std::string line = (inUse ? "* " : "  ") + name;
    if (session_.trays.isImageDrive(name[0]))
      line += ": " + discDescription(session_.trays.discIn(name[0]));
    session_.screen.line(line);
  }
  for (char letter = 'C'; letter <= 'Z'; ++letter) {
    const std::string problem = session_.devices.problem(letter);
    if (!problem.empty())
      session_.screen.line("  " + std::string(1, letter) + ": " + problem + ".");
  }
  session_.screen.line("Device mode:  " + chosen.DeviceName);
  return ExitCode::Ok;
}

ExitCode DiscCommandGroup::doDisc(const Arguments& arguments) {
  const std::string& verb = arguments[0];
  if (verb == "list" && arguments.size() == 1) return doList();
  const char drive = arguments.size() < 2 ? '\0' : driveLetter(arguments[1]);
  if (drive == '\0') return ExitCode::Usage;
  if (verb == "eject" && arguments.size() == 2) return doEject(drive);
  if (verb != "new" && verb != "insert") return ExitCode::Usage;
  if (arguments.size() < 3) return ExitCode::Usage;
  if (!session_.trays.isImageDrive(drive))
    return session_.fail(std::string(1, drive) + ": is no image drive.");
  if (verb == "new") return doNew(drive, arguments);
  return arguments.size() == 3 ? doInsert(drive, arguments[2]) : ExitCode::Usage;
}

ExitCode DiscCommandGroup::doList() {
  for (const char letter : session_.trays.letters())
    session_.screen.line(trayText(session_.trays, letter));
  session_.screen.line("Shelf " + session_.trays.shelf() + ":");
  for (const ImageDisc& disc : session_.trays.discsOnShelf())
    session_.screen.line("  " + std::string(Paths::doGetFilePart(disc.file)) + ": " +
                         discDescription(disc));
  return ExitCode::Ok;
}

bool DiscCommandGroup::doEmptyTray(char drive) {
  if (session_.trays.discIn(drive).file.empty() || session_.trays.remove(drive)) return true;
  session_.screen.line("The disc in " + std::string(1, drive) + ": cannot be taken out.");
  return false;
}

ExitCode DiscCommandGroup::doNew(char drive, const Arguments& arguments) {
  const std::uint8_t type = discTypeCode(arguments[2]);
  if (type == 0) return session_.fail("The disc types are " + discTypeNames() + ".");
  int blocks = 0;
  if (arguments.size() > 3) {
    const auto wanted = parseNumber(arguments[3], LeastBlocks, MostBlocks);
    if (!wanted) return session_.fail("The capacity is a number of blocks of 2048 bytes.");
    blocks = *wanted;
  }
  if (!session_.trays.insertBlank(drive, type, "Disc", blocks))
    return session_.fail("The disc cannot be made.");
  session_.main.prompt.doKeep(drive);
  session_.screen.line(trayText(session_.trays, drive));
  return ExitCode::Ok;
}

ExitCode DiscCommandGroup::doInsert(char drive, const std::string& file) {
  // A bare name is looked for on the shelf first.
  const std::string onShelf = session_.trays.shelf() + file;
  const bool bare = file.find('/') == std::string::npos;
  const std::string path = bare && session_.files.doIsFile(onShelf) ? onShelf : absolutePath(file);
  if (!session_.files.doIsFile(path)) return session_.fail("There is no disc " + path + ".");
  if (const TrayResult result = session_.trays.insert(drive, path); !result)
    return session_.fail("The disc " + path + " cannot be put in. " +
                         trayFaultText(result, session_.trays.shelf()));
  session_.main.prompt.doKeep(drive);
  session_.screen.line(trayText(session_.trays, drive));
  return ExitCode::Ok;
}

ExitCode DiscCommandGroup::doEject(char drive) {
  session_.main.prompt.doRelease(drive);
  if (session_.trays.isImageDrive(drive))
    return doEmptyTray(drive) ? ExitCode::Ok : ExitCode::Failed;
  if (session_.engine.do_SelectDeviceByLetter(drive) == 0)
    return session_.fail("There is no drive " + std::string(1, drive) + ":.");
  session_.engine.do_UnlockMedium();
  session_.engine.do_EjectMedium();
  return ExitCode::Ok;
}

}  // namespace korvenal::console
