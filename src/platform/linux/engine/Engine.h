#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/linux/engine/BurnRun.h"
#include "platform/linux/engine/DiscLibraries.h"
#include "platform/linux/engine/Drive.h"
#include "platform/linux/engine/IsoLayout.h"

namespace korvenal {

/// The engine for all drives of this machine, and the list of their letters. There is one at a
/// time in a process. Destroying it aborts a burn and waits for the end of an erase.
class Engine : public BurnEngine, public MountedDevices {
 public:
  /// All arguments outlive this.
  Engine(const Clock& clock, std::vector<Drive*> drives, SlowCalls& calls);
  ~Engine() override;

  void do_Deliver() override;
  std::int16_t do_InitializeASPI(int, const std::string&, int, const std::string&) override;
  void do_SetCacheSize(std::int32_t bytes) override;
  int do_SelectDeviceByLetter(char letter) override;
  int do_DeviceIsBurner() override;
  int do_DeviceCan(std::uint8_t code) override;

  int do_TestUnitReady() override;
  void do_LockMedium() override;
  void do_UnlockMedium() override;
  void do_EjectMedium() override;
  void do_LoadMedium() override;
  void do_SetDeviceSpeed(std::int32_t read, std::int32_t write) override;
  std::int32_t do_GetWriteSpeed() override;
  std::int32_t do_GetReadSpeed() override;

  std::uint8_t do_DiscIs() override;
  std::int16_t do_Writable() override;
  int do_Erasable() override;
  std::uint8_t do_SessionsOnDisc() override;
  std::int32_t do_GetTotalBlocksOnDisc() override;
  std::int32_t do_GetFreeBlocksOnDisc() override;
  std::int32_t do_GetBlocksWithoutRoom() override;

  void do_ClearAll() override;
  void do_SetJolietFS(int on) override { switches_.joliet = on != 0; }
  /// Without effect: trees are ISO 9660, with Rock Ridge and Joliet.
  void do_SetUDFBridge(int) override {}
  void do_SetBurnProof(int on) override { switches_.underrunProof = on != 0; }
  void do_SetPerformOPC(int on) override { switches_.calibrate = on != 0; }
  void do_SetReplaceFile(int on) override { switches_.replace = on != 0; }
  void do_SetTestWrite(int on) override { switches_.simulate = on != 0; }
  void do_SetFinalizeDisc(int on) override { switches_.finalize = on != 0; }
  void do_SetSkipFileOnError(int on) override { switches_.skipAtPreparation = on != 0; }
  void do_SetFileError_Skip(int on) override { switches_.skipAtBurn = on != 0; }
  void do_SetVolumeID(const std::string& label) override { label_ = label; }
  void do_SetVolumeSetID(const std::string& text) override { volumeSet_ = text; }
  int do_ImportSession(std::uint8_t session, const std::string& path,
                       const std::function<bool()>& pump = {}) override;
  void do_CreateDir(const std::string& parent, const std::string& name) override;
  void do_CreateDirLike(const std::string& parent, const std::string& name,
                        const std::string& source) override;
  void do_InsertFileWithName(const std::string& parent, const std::string& source,
                             const std::string& name, const std::string&, int part,
                             std::int64_t firstBlock, std::int64_t remainder,
                             std::int64_t wholeGiB) override;
  void do_SetPlannedSource(const PlannedSource& planned) override { planned_ = planned; }
  std::vector<SourceFinding> do_MeasureSources(const std::function<bool()>& pump) override;
  FileInfo do_GetMeasuredSource(std::int32_t file) override;
  void do_LeaveOutSource(std::int32_t file) override;
  void do_SetFaultList(const std::string& name, std::int64_t bytes) override {
    switches_.faultListName = name;
    switches_.faultListBytes = bytes;
  }
  std::int32_t do_Prepare(const std::function<bool()>& pump) override;
  std::int32_t do_GetImageSize() override;

  int do_Burn(FinishCallback finished, FileErrorCallback fileError, int,
              const std::string& logFile) override;
  void do_AbortBurn() override;
  std::int32_t do_GetBlocksWritten() override;
  std::int32_t do_GetState() override { return work_ ? 1 : 0; }
  std::int16_t do_EraseDisc(int quick, FinishCallback finished) override;
  std::int32_t do_GetErrorNumber() override { return errorNumber_; }
  std::string do_GetErrorString() override { return errorText_; }
  std::vector<FileFault> do_GetSkippedFiles() override { return skipped_; }

  std::string devicePath(char letter) override;
  std::string problem(char letter) override;

  /// The reader of a tree of the disc in a drive, for the files on it; null without one.
  std::shared_ptr<DiscReader> readerOf(DiscTree tree);
  std::vector<DiscSession> sessionsOf(char letter);
  DiscState stateOf(char letter);
  const DiscLibraries& libraries() const { return libraries_; }

 private:
  struct Switches {
    bool joliet = true;
    bool underrunProof = true;
    bool calibrate = true;
    bool replace = false;
    bool simulate = false;
    bool finalize = false;
    bool skipAtPreparation = true;
    bool skipAtBurn = true;
    std::string faultListName;
    std::int64_t faultListBytes = 0;
  };
  /// The burn or erase at work. Its thread ends before it is destroyed.
  struct Work {
    Drive* drive = nullptr;
    FinishCallback finished;
    FileErrorCallback fileError;
    std::string logFile;
    std::unique_ptr<BurnRun> burn;
    std::atomic<bool> eraseDone = false;
    DriveResult eraseResult;
    std::thread eraseThread;
    ~Work() {
      if (eraseThread.joinable()) eraseThread.join();
    }
  };

  Drive* find(char letter) const;
  std::shared_ptr<DiscReader> readerIn(Drive& drive, std::optional<std::uint32_t> session = {});
  /// The drive, unless its earlier sessions may be read on another thread.
  Drive* findIdle(char letter) const;
  bool isBusy(const Drive* drive) const { return work_ && work_->drive == drive; }
  bool mayTouch() const;
  std::shared_ptr<EarlierImage> takeEarlier(const TrackPlace& place,
                                            const std::function<bool()>& pump, std::string& why);
  void setError(int number, const std::string& text);
  void deliverFaults(const std::vector<FileFault>& faults);
  void deliverEnd(const DriveResult& result);

  const Clock& clock_;
  DiscLibraries libraries_;
  ReleaseThread release_;  ///< needs the libraries
  SlowCalls& calls_;
  std::vector<Drive*> drives_;
  Drive* selected_ = nullptr;
  std::int32_t readSpeed_ = 0;  ///< KB/s; 0: as fast as can be
  std::int32_t writeSpeed_ = 0;
  Switches switches_;
  std::string label_;
  std::string volumeSet_;
  std::shared_ptr<IsoLayout> layout_;
  bool import_ = false;
  std::shared_ptr<EarlierImage> earlier_;  ///< of the disc, until it is used
  std::int64_t earlierStart_ = -1;         ///< where its tree begins
  bool preparing_ = false;                 ///< earlier sessions may be read on another thread
  std::optional<PlannedSource> planned_;
  std::shared_ptr<PreparedTrack> prepared_;
  std::int32_t imageSize_ = 0;          ///< blocks; outlives the start of the burn
  std::vector<FileFault> deliverable_;  ///< of the burn at work, found at its preparation
  std::vector<FileFault> skipped_;
  std::int32_t errorNumber_ = 0;
  std::string errorText_;
  std::unique_ptr<Work> work_;
};

}  // namespace korvenal
