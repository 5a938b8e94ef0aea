#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/engine/DiscReader.h"

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
};

/// Where the next track goes.
struct TrackPlace {
  std::string address;            ///< of the drive, as the burning library takes it
  std::string imageFile;          ///< the image file; empty for a real drive
  std::int64_t startBlock = 0;    ///< first block of the session
  std::int64_t gap = 0;           ///< blocks in front of it that no earlier session has taken
  std::int64_t lastSession = -1;  ///< first block of the newest tree there is; -1 for none
  bool refuses = false;           ///< no track can be prepared for this disc
  std::int64_t failAfter = -1;    ///< the burn fails when so many blocks are written; -1: never
  int failNumber = 0;             ///< the error number then; 0: the usual one
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
  /// "SCSI#CDROM&VEN_x&PROD_y&REV_z#srN".
  virtual std::string devicePath() const = 0;
  virtual bool isBurner() const = 0;
  virtual bool can(std::uint8_t code) const = 0;

  virtual bool isReady() = 0;
  virtual void lock(bool locked) = 0;
  virtual void eject() = 0;
  virtual void load() = 0;
  virtual DiscState state() = 0;
  virtual std::int32_t maxSpeed() = 0;  ///< KB/s, for the loaded disc

  /// A reader of the newest session; null without a readable disc. The drive keeps it until the
  /// disc changes.
  virtual std::shared_ptr<DiscReader> reader() = 0;
  /// Detaches the reader, if there is one.
  virtual void dropReader() = 0;
  virtual std::unique_ptr<BlockReader> openBlocks() = 0;

  virtual TrackPlace place() = 0;
  /// Marks the disc as being written. False when that cannot be recorded.
  virtual bool beginBurn(std::string& why) = 0;
  virtual void endBurn(const DriveResult& result) = 0;
  /// Between beginErase and endErase the drive is busy; `erase` does the work.
  virtual bool beginErase() = 0;
  virtual DriveResult erase(bool quick) = 0;
  virtual void endErase(const DriveResult& result) = 0;
};

}  // namespace korvenal
