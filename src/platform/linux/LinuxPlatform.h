#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Ports.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/LinuxTargetFolder.h"
#include "platform/linux/LinuxWalker.h"
#include "platform/linux/LoginPowerState.h"
#include "platform/linux/SqliteArchiveBits.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ZipIndexArchive.h"
#include "platform/linux/engine/Engine.h"
#include "platform/linux/engine/EngineDiscFiles.h"
#include "platform/linux/engine/ImageShelf.h"
#include "platform/linux/engine/MmcDrive.h"

namespace korvenal {

/// All ports as they are served on Linux, built in the order in which they need each other. A
/// process has one.
class LinuxPlatform {
 public:
  struct Places {
    std::string applicationFolder;  ///< with '/' at the end; holds the archive bits
    ImageShelf::Options imageDrives;
  };

  explicit LinuxPlatform(const Places& places);
  ~LinuxPlatform();
  LinuxPlatform(const LinuxPlatform&) = delete;
  LinuxPlatform& operator=(const LinuxPlatform&) = delete;

  /// The ports, with the front end that completes them. It is also what works while a drive is
  /// slow to answer: to be called on the program's thread.
  Ports ports(Desktop& desktop);

  const Clock& clock() const { return clock_; }

 private:
  SystemClock clock_;
  LinuxFiles nativeFiles_;
  ImageShelf shelf_;
  SlowCalls slowCalls_;
  std::vector<std::unique_ptr<Drive>> realDrives_;
  Engine engine_;
  EngineDiscFiles discFiles_;
  LinuxFiles files_;
  LinuxTargetFolders targets_;
  LinuxWalker walker_;
  ZipIndexArchive archive_;
  SqliteArchiveBits archiveBits_;
  LoginPowerState power_;
};

}  // namespace korvenal
