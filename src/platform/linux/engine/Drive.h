#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/SetIdentity.h"
#include "platform/linux/engine/DiscReader.h"
#include "platform/linux/engine/GrabbedDrive.h"

namespace korvenal {

/// What a drive writes; each writes what those before it do.
enum class DriveAbility { Reads, WritesCd, WritesDvd, WritesDualLayer };

/// What a drive tells of the loaded disc. All zero without one.
struct DiscState {
  std::uint8_t type = 0;  ///< disc type code
  bool writable = false;
  bool erasable = false;
  int sessions = 0;
  std::int64_t totalBlocks = 0;
  std::int64_t freeBlocks = 0;
  std::int64_t withoutRoom =
      0;  ///< more blocks are free, but the disk of the image cannot take them
};

/// Where the next track goes.
struct TrackPlace {
  std::string address;                 ///< of the image, as the burning library takes it
  std::string imageFile;               ///< the image file; empty for a real drive
  std::int64_t startBlock = 0;         ///< first block of the session
  std::int64_t gap = 0;                ///< blocks in front of it that no earlier session has taken
  std::int64_t lastSession = -1;       ///< first block of the newest tree there is; -1 for none
  bool overwritable = false;           ///< block 0 leads to the newest tree; written at startBlock
  burn::burn_drive* handle = nullptr;  ///< of a real drive, which holds it
  std::int64_t roomBlocks = 0;         ///< of a real drive: what the disc still takes
  std::int64_t tailBlocks = 0;         ///< padding wanted behind the track, where there is room
  bool refuses = false;                ///< no track can be prepared for this disc
  std::int64_t failAfter = -1;  ///< the burn fails when so many blocks are written; -1: never
  int failNumber = 0;           ///< the error number then; 0: the usual one
};

/// The end of a burn or an erase.
struct DriveResult {
  int error = 0;  ///< 0: all well; else the error number
  std::string text;
  std::int64_t endBlock = 0;  ///< first block behind the track
  bool closeDisc = false;
  bool touched = true;  ///< false: nothing was written, the disc is as it was
};

/// A drive with its tray. All on the logic's thread, but for `erase`, which runs on the engine's.
class Drive {
 public:
  virtual ~Drive() = default;

  virtual char letter() const = 0;
  /// False when the drive is not plugged in.
  virtual bool isPresent() const { return true; }
  /// False when this user may not use it.
  virtual bool isAllowed() const { return true; }
  /// Why the drive cannot be used, a sentence without its stop; empty when it can.
  virtual std::string problem() const { return {}; }
  /// "SCSI#CDROM&VEN_x&PROD_y&REV_z#srN".
  virtual std::string devicePath() const = 0;
  virtual bool isBurner() const = 0;
  virtual bool can(std::uint8_t code) = 0;

  virtual bool isReady() = 0;
  virtual void lock(bool locked) = 0;
  virtual void eject() = 0;
  virtual void load() = 0;
  /// Lets other programs use the drive until it is asked again.
  virtual void release() {}
  virtual DiscState state() = 0;
  /// Speeds are KB/s for the loaded disc; 0 asks for the maximum.
  virtual void setSpeed(std::int32_t read, std::int32_t write) = 0;
  /// What the drive makes of that wish.
  virtual std::int32_t writeSpeed(std::int32_t wanted) = 0;
  virtual std::int32_t readSpeed(std::int32_t wanted) = 0;

  /// The sessions of the disc that hold a tree, the oldest first.
  virtual std::vector<DiscSession> sessions() = 0;
  /// A reader of the newest tree, or of that of a session; null without a readable disc or such a
  /// session. The drive keeps it until the disc changes.
  virtual std::shared_ptr<DiscReader> reader(const DiscLibraries& libraries, ReaderAid aid,
                                             std::optional<std::uint32_t> session) = 0;
  /// Detaches all readers.
  virtual void dropReaders() = 0;
  virtual std::unique_ptr<BlockReader> openBlocks() = 0;

  virtual TrackPlace place() = 0;
  /// Marks the disc as being written. False when that cannot be recorded.
  virtual bool beginBurn(std::string& why) = 0;
  /// Records the end on the disc; when that fails, the burn has failed, and the result says so.
  virtual void endBurn(DriveResult& result) = 0;
  /// Between beginErase and endErase the drive is busy; `erase` does the work.
  virtual bool beginErase() = 0;
  virtual DriveResult erase(bool quick) = 0;
  virtual void endErase(const DriveResult& result) = 0;
};

}  // namespace korvenal
