#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/SetIdentity.h"

namespace korvenal {

/// What is done with the image of a disc. Many programs may read one at a time; who writes is
/// alone.
enum class ImageUse : std::uint8_t { None, Read, Written };

/// A disc that is an image file, as a person sees it.
struct ImageDisc {
  std::string file;                     ///< native path of the image; empty for no disc
  std::string label;                    ///< volume label, the newest; empty on a blank disc
  std::vector<DiscSession> trees = {};  ///< of its sessions, the oldest first
  std::uint8_t typeCode = 0;
  std::int64_t capacityBlocks = 0;
  int sessions = 0;       ///< complete ones; none on a blank or a spoilt disc
  bool closed = false;    ///< takes no more data
  UnixTime modified = 0;  ///< of the image file: tells the newest set
  ImageUse elsewhere =
      ImageUse::None;  ///< by another program; label and trees are empty if Written
};

/// What became of a wish to change a disc.
struct TrayResult {
  enum Fault : std::uint8_t {
    None,
    DriveBusy,       ///< it burns, erases or is being served
    InAnotherDrive,  ///< the disc lies in the tray of another drive
    NotADisc,        ///< the file is missing, or damaged
    NotMade,         ///< no file could be made on the shelf
    InUse,           ///< another program burns or erases the disc
  };
  Fault fault = None;
  explicit operator bool() const { return fault == None; }
};

/// The image drives: trays that hold one disc or none, and the shelf where the other discs lie. A
/// disc that goes in sends the one before to the shelf. A change that fails changes nothing.
class ImageTrays {
 public:
  virtual ~ImageTrays() = default;
  virtual bool isImageDrive(char letter) const = 0;
  /// The letters offered, "V" first.
  virtual std::vector<char> letters() const = 0;
  /// True when discs are put in without asking.
  virtual bool isFeederOn() const = 0;
  virtual ImageDisc discIn(char letter) const = 0;
  virtual bool isOpen(char letter) const = 0;
  /// Native path of the shelf, with '/' at the end.
  virtual std::string shelf() const = 0;
  virtual std::vector<ImageDisc> discsOnShelf() const = 0;
  /// Native paths of all files that stand for discs made here, in trays and on the shelf, with what
  /// the trays need to be remembered.
  virtual std::vector<std::string> discFiles() const { return {}; }
  /// Those of them that a run may write to, because they lie in a tray and take data.
  virtual std::vector<std::string> writtenFiles() const { return {}; }
  /// Puts in a new blank disc of the type; `name` is its file name without extension, a number is
  /// added when it is taken. `blocks` 0 is the capacity of real discs of that type.
  virtual TrayResult insertBlank(char letter, std::uint8_t typeCode, const std::string& name,
                                 std::int64_t blocks) = 0;
  /// `file`: a native path, or the name of a file on the shelf.
  virtual TrayResult insert(char letter, const std::string& file) = 0;
  /// Takes the disc out, back to the shelf; the tray is open then.
  virtual TrayResult remove(char letter) = 0;
};

}  // namespace korvenal
