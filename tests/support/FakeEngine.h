#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/BurnEngine.h"
#include "support/ManualClock.h"

namespace korvenal::test {

struct FakeDisc {
  std::uint8_t type = 2;
  std::int32_t totalBlocks = 359849;
  std::int32_t usedBlocks = 0;
  int sessions = 0;
  bool writable = true;
  bool erasable = false;
  std::string fileSystem = "CDFS";
  std::string label = {};
  std::map<std::string, std::int64_t> files = {};  ///< disc path -> bytes
};

/// Drives and discs in memory. Every call that changes something is recorded; the n-th call of any
/// operation with a result can be made to fail.
class FakeEngine : public BurnEngine {
 public:
  struct Drive {
    std::optional<FakeDisc> disc;
    bool open = false;
    bool locked = false;
  };

  explicit FakeEngine(ManualClock& clock) : clock_(clock) {}

  std::map<char, Drive> drives;
  std::vector<std::string> calls;                ///< "do_CreateDir a b"
  std::map<std::string, std::set<int>> failing;  ///< operation -> its failing calls, from 1
  std::set<std::string> unreadable;              ///< sources that turn to padding while burning
  std::int32_t finishCode = 0;                   ///< of every burn and erase
  std::int32_t errorNumber = 0;
  std::string errorText;
  std::int32_t writeSpeed = 0;
  std::int32_t blockLoss = 0;  ///< the disc ends with so many blocks fewer than the track
  bool loseDiscAtLoad = false;
  /// How sources look when they are measured; without it all are as planned.
  std::function<FileInfo(const std::string& source)> look;
  std::int64_t millisecondsATurn = 250;
  int turnsABurn = 8;

  int count(const std::string& call) const;
  FakeDisc& disc() { return *drives[selected_].disc; }

  void do_Deliver() override;
  std::int16_t do_InitializeASPI(int, const std::string&, int, const std::string&) override {
    return 1;
  }
  void do_SetCacheSize(std::int32_t) override {}
  int do_SelectDeviceByLetter(char letter) override;
  int do_DeviceIsBurner() override { return 1; }
  int do_DeviceCan(std::uint8_t) override { return 1; }
  int do_TestUnitReady() override;
  void do_LockMedium() override { drives[selected_].locked = true; }
  void do_UnlockMedium() override { drives[selected_].locked = false; }
  void do_EjectMedium() override;
  void do_LoadMedium() override;
  void do_SetDeviceSpeed(std::int32_t read, std::int32_t write) override;
  std::int32_t do_GetWriteSpeed() override { return writeSpeed; }
  std::int32_t do_GetReadSpeed() override { return writeSpeed; }
  std::uint8_t do_DiscIs() override { return fails("do_DiscIs") ? 0 : disc().type; }
  std::int16_t do_Writable() override { return !fails("do_Writable") && disc().writable; }
  int do_Erasable() override { return disc().erasable; }
  std::uint8_t do_SessionsOnDisc() override;
  std::int32_t do_GetTotalBlocksOnDisc() override { return disc().totalBlocks; }
  std::int32_t do_GetFreeBlocksOnDisc() override { return disc().totalBlocks - disc().usedBlocks; }
  void do_ClearAll() override;
  void do_SetJolietFS(int on) override { note("do_SetJolietFS", on); }
  void do_SetUDFBridge(int on) override { note("do_SetUDFBridge", on); }
  void do_SetBurnProof(int on) override { note("do_SetBurnProof", on); }
  void do_SetPerformOPC(int on) override { note("do_SetPerformOPC", on); }
  void do_SetReplaceFile(int on) override { note("do_SetReplaceFile", on); }
  void do_SetTestWrite(int on) override { note("do_SetTestWrite", on); }
  void do_SetFinalizeDisc(int on) override { note("do_SetFinalizeDisc", on); }
  void do_SetSkipFileOnError(int on) override { note("do_SetSkipFileOnError", on); }
  void do_SetFileError_Skip(int on) override { note("do_SetFileError_Skip", on); }
  void do_SetVolumeID(const std::string& label) override { label_ = label; }
  void do_SetVolumeSetID(const std::string&) override {}
  int do_ImportSession(std::uint8_t, const std::string& path,
                       const std::function<bool()>& pump) override;
  void do_CreateDir(const std::string& parent, const std::string& name) override;
  void do_InsertFileWithName(const std::string& parent, const std::string& source,
                             const std::string& name, const std::string&, int part,
                             std::int64_t firstBlock, std::int64_t remainder,
                             std::int64_t wholeGiB) override;
  void do_SetPlannedSource(const PlannedSource& planned) override { planned_ = planned; }
  std::vector<SourceFinding> do_MeasureSources(const std::function<bool()>& pump) override;
  FileInfo do_GetMeasuredSource(std::int32_t file) override;
  void do_LeaveOutSource(std::int32_t file) override;
  void do_SetFaultList(const std::string&, std::int64_t) override {}
  std::int32_t do_Prepare(const std::function<bool()>& pump) override;
  std::int32_t do_GetImageSize() override;
  int do_Burn(FinishCallback finished, FileErrorCallback fileError, int,
              const std::string& logFile) override;
  void do_AbortBurn() override;
  std::int32_t do_GetBlocksWritten() override { return written_; }
  std::int32_t do_GetState() override { return state_; }
  std::int16_t do_EraseDisc(int quick, FinishCallback finished) override;
  std::int32_t do_GetErrorNumber() override { return errorNumber; }
  std::string do_GetErrorString() override { return errorText; }
  std::vector<FileFault> do_GetSkippedFiles() override { return skipped_; }

 private:
  struct LaidOut {
    std::string path;
    std::string source;
    std::int64_t bytes;
    PlannedSource planned;
    FileInfo found = {};
    bool leftOut = false;
  };
  enum class Task { None, Burn, Erase };

  void note(const std::string& name, int value) {
    calls.push_back(name + " " + std::to_string(value));
  }
  bool fails(const std::string& name);
  std::int32_t trackBlocks() const;
  void doCommitTrack();

  ManualClock& clock_;
  char selected_ = 'V';
  std::map<std::string, int> called_;
  std::vector<LaidOut> layout_;
  std::string label_;
  PlannedSource planned_;
  std::vector<FileFault> skipped_;
  Task task_ = Task::None;
  int turns_ = 0;
  bool aborted_ = false;
  std::int32_t written_ = 0;
  std::int32_t state_ = 0;
  FinishCallback finished_;
  FileErrorCallback fileError_;
};

}  // namespace korvenal::test
