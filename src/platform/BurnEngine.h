#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Files.h"

namespace korvenal {

inline constexpr std::int64_t BlockBytes = 2048;  ///< a block, the unit of disc sizes

/// What the plan knows of a source file. A file that looks otherwise when it is prepared counts as
/// a file error, unless the sources were measured: then what was found is what is planned. A file
/// that looks otherwise when it is read is padded when such files are to be skipped, and fails the
/// burn otherwise.
struct PlannedSource {
  std::int64_t size = 0;                 ///< bytes of the whole source file
  std::optional<std::int64_t> modified;  ///< seconds since 1970 UTC, when the plan knows it
};

/// A source that is not as it was planned when its disc is prepared.
struct SourceFinding {
  std::int32_t file = 0;  ///< its place among the files inserted since `do_ClearAll`, from 0
  FileInfo now;           ///< as it was found
  std::string reason;     ///< why it cannot be saved; empty: it can be, as it is now
};

/// A file that could not be put on a disc.
struct FileFault {
  std::string discPath;  ///< '\\' between components
  std::string source;    ///< native path
  std::string reason;
};

/// What the logic asks of drives and discs. One device is selected at a time; all operations that
/// name no drive act on it. One layout (the tree of the next track) is kept at a time. Flags are
/// -1 for true and 0 for false; results are true when nonzero unless said otherwise. No operation
/// raises. Where a drive is slow to answer, the front end works meanwhile: its handlers may run
/// inside any operation. What they ask of drives then is refused, as of drives that are not ready.
///
/// Burn and erase work in the background. Their callbacks run on the calling thread, inside
/// `do_Deliver`, never at any other moment.
class BurnEngine {
 public:
  /// The first value is the error code (0 success, low 16 bits count), the second is unused.
  using FinishCallback = std::function<void(std::int32_t, std::int32_t)>;
  using FileErrorCallback = std::function<void(std::int32_t, std::int32_t)>;

  virtual ~BurnEngine() = default;

  /// Runs the callbacks of background work since the last call. Every wait loop calls it.
  virtual void do_Deliver() = 0;

  // The library and the choice of a drive.
  virtual std::int16_t do_InitializeASPI(int, const std::string&, int, const std::string&) = 0;
  virtual void do_SetCacheSize(std::int32_t bytes) = 0;
  virtual int do_SelectDeviceByLetter(char letter) = 0;
  virtual int do_DeviceIsBurner() = 0;
  /// Codes 13 to 18: a device that answers any of them writes DVD; 18 alone tells "DVD+R DL".
  virtual int do_DeviceCan(std::uint8_t code) = 0;

  // The drive and its tray.
  virtual int do_TestUnitReady() = 0;
  virtual void do_LockMedium() = 0;
  virtual void do_UnlockMedium() = 0;
  virtual void do_EjectMedium() = 0;
  virtual void do_LoadMedium() = 0;
  /// KB/s; 0, 0 asks for the maximum.
  virtual void do_SetDeviceSpeed(std::int32_t read, std::int32_t write) = 0;
  virtual std::int32_t do_GetWriteSpeed() = 0;
  virtual std::int32_t do_GetReadSpeed() = 0;

  // The loaded disc.
  virtual std::uint8_t do_DiscIs() = 0;    ///< disc type code; 0: none or unknown
  virtual std::int16_t do_Writable() = 0;  ///< above 0: more data can go on
  virtual int do_Erasable() = 0;
  virtual std::uint8_t do_SessionsOnDisc() = 0;  ///< 0 on a blank disc, 1 on a formatted DVD+RW
  virtual std::int32_t do_GetTotalBlocksOnDisc() = 0;
  virtual std::int32_t do_GetFreeBlocksOnDisc() = 0;
  /// Blocks that are free besides, but cannot be written: the disc is an image, and the disk that
  /// it lies on has no room for them.
  virtual std::int32_t do_GetBlocksWithoutRoom() { return 0; }

  // The layout and the switches of the next burn.
  virtual void do_ClearAll() = 0;
  virtual void do_SetJolietFS(int on) = 0;
  virtual void do_SetUDFBridge(int on) = 0;
  virtual void do_SetBurnProof(int on) = 0;
  virtual void do_SetPerformOPC(int on) = 0;
  virtual void do_SetReplaceFile(int on) = 0;
  virtual void do_SetTestWrite(int on) = 0;
  virtual void do_SetFinalizeDisc(int on) = 0;
  virtual void do_SetSkipFileOnError(int on) = 0;
  virtual void do_SetFileError_Skip(int on) = 0;
  virtual void do_SetVolumeID(const std::string& label) = 0;
  /// The volume-set id: at most 128 bytes, kept as they are.
  virtual void do_SetVolumeSetID(const std::string& text) = 0;
  /// Takes over all that the sessions of the disc hold, or fails with its reason as the error text.
  /// Calls `pump`, where there is one, again and again meanwhile; true from it stops.
  virtual int do_ImportSession(std::uint8_t session, const std::string& path,
                               const std::function<bool()>& pump = {}) = 0;
  virtual void do_CreateDir(const std::string& parent, const std::string& name) = 0;
  /// A folder that has the permission bits, the owner and the date of the one at a native path, as
  /// they are when the track is prepared. Without such a folder it is like any other.
  virtual void do_CreateDirLike(const std::string& parent, const std::string& name,
                                const std::string& source) {
    static_cast<void>(source);
    do_CreateDir(parent, name);
  }
  /// With `part` 0 the whole file, the last two values being 0. With `part` -1 the bytes from
  /// `firstBlock` * 2048 on, `wholeGiB` * 1073741824 + `remainder` of them.
  virtual void do_InsertFileWithName(const std::string& parent, const std::string& source,
                                     const std::string& name, const std::string&, int part,
                                     std::int64_t firstBlock, std::int64_t remainder,
                                     std::int64_t wholeGiB) = 0;
  /// Holds for the next `do_InsertFileWithName`, and for that one alone.
  virtual void do_SetPlannedSource(const PlannedSource& planned) = 0;
  /// Looks at all sources that were not found yet, and tells those that are not as planned. What
  /// was found is planned from then on; what cannot be saved stays out of the tree, and is looked
  /// at again by the next call unless it was left out. Calls `pump` again and again meanwhile; true
  /// from it stops, and the findings are those so far.
  virtual std::vector<SourceFinding> do_MeasureSources(const std::function<bool()>& pump) = 0;
  /// A source as it was measured; of kind Missing when it was not found. Numbered as in a finding.
  virtual FileInfo do_GetMeasuredSource(std::int32_t file) = 0;
  /// Takes an inserted file out of the tree to come. Numbered as in a finding.
  virtual void do_LeaveOutSource(std::int32_t file) = 0;
  /// Wants a list of the files that cannot be read to their end as the last file of the track: its
  /// name at the root, and its bytes (see FaultList). Where the disc lacks the room it is smaller
  /// or stays away. A file that fails and finds no place in it cancels the burn.
  virtual void do_SetFaultList(const std::string& name, std::int64_t bytes) = 0;
  /// Above 0: prepared. Calls `pump` again and again meanwhile; true from it stops.
  virtual std::int32_t do_Prepare(const std::function<bool()>& pump) = 0;
  virtual std::int32_t do_GetImageSize() = 0;  ///< blocks of the prepared track

  // Burning and erasing.
  virtual int do_Burn(FinishCallback finished, FileErrorCallback fileError, int,
                      const std::string& logFile) = 0;
  virtual void do_AbortBurn() = 0;
  virtual std::int32_t do_GetBlocksWritten() = 0;
  virtual std::int32_t do_GetState() = 0;  ///< 0: idle
  virtual std::int16_t do_EraseDisc(int quick, FinishCallback finished) = 0;
  virtual std::int32_t do_GetErrorNumber() = 0;
  virtual std::string do_GetErrorString() = 0;

  /// The files that the last burn did not save: their places on the disc hold padding, or they are
  /// not in its tree. Those that measuring told of are not among them.
  virtual std::vector<FileFault> do_GetSkippedFiles() = 0;
};

/// The system's list of drives: what stands behind a letter.
class MountedDevices {
 public:
  virtual ~MountedDevices() = default;
  /// A device path of the CD-ROM class, "SCSI#CDROM&VEN_x&PROD_y&REV_z#sr0"; empty for none.
  virtual std::string devicePath(char letter) = 0;
  /// Why a drive that is there cannot be used, a sentence without its stop; empty when it can.
  virtual std::string problem(char) { return {}; }
};

}  // namespace korvenal
