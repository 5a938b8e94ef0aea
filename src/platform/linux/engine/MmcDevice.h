#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/engine/MmcFacts.h"

namespace korvenal {

/// A real drive, as thin as can be: what the burning library and the system say and do. What is
/// said here to need the hold fails without it.
class MmcDevice {
 public:
  enum class Tray { NotReady, Open, Empty, Loaded };

  virtual ~MmcDevice() = default;

  /// False when the drive is not plugged in.
  virtual bool isPresent() const = 0;
  /// A sentence without its stop when this user may not use the drive; empty otherwise.
  virtual std::string refusal() const = 0;
  virtual std::string devicePath() const = 0;
  virtual bool isBurner() const = 0;
  /// Another call is still at work, further up on this thread: nothing may be asked now.
  virtual bool isOccupied() const { return false; }

  virtual Tray tray() = 0;
  virtual void openTray() = 0;
  /// Waits until the drive knows what lies in it, or until the wait is given up.
  virtual void closeTray() = 0;
  /// Ends a wait of `closeTray` on another thread; at any other time without effect.
  virtual void giveUpWaiting() {}

  /// Takes the drive, so that no other program uses it. When that fails, `why` gets a sentence.
  virtual bool hold(std::string& why) = 0;
  /// Gives it back, unlocked. What the library knew of the disc is forgotten.
  virtual void release() = 0;
  virtual bool isHeld() const = 0;

  // All of these need the hold.

  virtual std::vector<int> profiles() = 0;
  virtual MmcReport report() = 0;
  /// As BlockReader::read.
  virtual std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) = 0;
  /// KB/s; 0 is the maximum.
  virtual void setSpeed(std::int32_t read, std::int32_t write) = 0;
  /// Takes as long as it takes. `blocks` is the size of the disc. Runs on the engine's thread.
  virtual DriveResult erase(EraseKind kind, bool quick, std::int64_t blocks) = 0;
  virtual burn::burn_drive* handle() = 0;
};

}  // namespace korvenal
