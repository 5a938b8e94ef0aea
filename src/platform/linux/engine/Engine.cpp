#include "platform/linux/engine/Engine.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <fstream>
#include <limits>
#include <utility>

#include "platform/linux/engine/EarlierTree.h"

namespace korvenal {

namespace {

constexpr std::int64_t GiB = std::int64_t{1} << 30;
constexpr int PreparationFailed = 9216;
constexpr int NoDisc = 1032;
constexpr int DriveRefused = EBUSY;

std::int32_t blocks32(std::int64_t blocks) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(blocks, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

Engine::Engine(const Clock& clock, std::vector<Drive*> drives, SlowCalls& calls)
    : clock_(clock),
      calls_(calls),
      drives_(std::move(drives)),
      layout_(std::make_shared<IsoLayout>(clock_)) {}

Engine::~Engine() {
  // The end of work must be recorded on the disc.
  if (work_ && work_->burn) {
    work_->burn->abort();
    work_->burn->wait();
    DriveResult result = work_->burn->result();
    work_->drive->endBurn(result);
  } else if (work_) {
    work_->eraseThread.join();
    work_->drive->endErase(work_->eraseResult);
  }
  // The library's images share a counter that is not safe among threads.
  release_.wait();
  work_.reset();
  prepared_.reset();
  earlier_.reset();
  // Readers need the libraries.
  for (Drive* drive : drives_) {
    drive->dropReaders();
    drive->release();
  }
}

Drive* Engine::find(char letter) const {
  for (Drive* drive : drives_)
    if (drive->letter() == letter && drive->isPresent()) return drive;
  return nullptr;
}

void Engine::setError(int number, const std::string& text) {
  errorNumber_ = number;
  errorText_ = text;
}

// The library and the choice of a drive.

std::int16_t Engine::do_InitializeASPI(int, const std::string&, int, const std::string&) {
  return libraries_.isReady() ? 1 : 0;
}

/// Buffers have their sizes by measurement; a larger one brings nothing.
void Engine::do_SetCacheSize(std::int32_t) {}

int Engine::do_SelectDeviceByLetter(char letter) {
  Drive* drive = find(letter);
  if (drive == nullptr) return 0;
  if (!drive->isAllowed()) {
    setError(DriveRefused, drive->problem());
    return 0;
  }
  if (drive != selected_) readSpeed_ = writeSpeed_ = 0;
  selected_ = drive;
  return -1;
}

int Engine::do_DeviceIsBurner() {
  return selected_ != nullptr && selected_->isBurner() ? -1 : 0;
}

int Engine::do_DeviceCan(std::uint8_t code) {
  return selected_ != nullptr && selected_->can(code) ? -1 : 0;
}

std::shared_ptr<DiscReader> Engine::readerIn(Drive& drive, std::optional<std::uint32_t> session) {
  return drive.reader(libraries_, {&calls_, &release_}, session);
}

std::string Engine::devicePath(char letter) {
  const Drive* drive = find(letter);
  return drive != nullptr ? drive->devicePath() : std::string();
}

std::string Engine::problem(char letter) {
  const Drive* drive = find(letter);
  return drive != nullptr ? drive->problem() : std::string();
}

// The drive and its tray.

/// Buttons and other windows reach for drives at any moment.
bool Engine::mayTouch() const {
  return selected_ != nullptr && !isBusy(selected_) && !preparing_;
}

int Engine::do_TestUnitReady() {
  if (!mayTouch()) return 0;
  if (selected_->isReady()) return -1;
  if (const std::string problem = selected_->problem(); !problem.empty())
    setError(DriveRefused, problem);
  return 0;
}

void Engine::do_LockMedium() {
  if (mayTouch()) selected_->lock(true);
}

void Engine::do_UnlockMedium() {
  if (mayTouch()) selected_->lock(false);
}

void Engine::do_EjectMedium() {
  if (mayTouch()) selected_->eject();
}

void Engine::do_LoadMedium() {
  if (mayTouch()) selected_->load();
}

void Engine::do_SetDeviceSpeed(std::int32_t read, std::int32_t write) {
  readSpeed_ = read;
  writeSpeed_ = write;
  if (mayTouch()) selected_->setSpeed(read, write);
}

std::int32_t Engine::do_GetWriteSpeed() {
  return selected_ != nullptr ? selected_->writeSpeed(writeSpeed_) : 0;
}

std::int32_t Engine::do_GetReadSpeed() {
  return selected_ != nullptr ? selected_->readSpeed(readSpeed_) : 0;
}

// The loaded disc.

DiscState Engine::stateOf(char letter) {
  Drive* drive = find(letter);
  return drive != nullptr ? drive->state() : DiscState();
}

Drive* Engine::findIdle(char letter) const {
  Drive* drive = find(letter);
  return preparing_ && drive == selected_ ? nullptr : drive;
}

std::shared_ptr<DiscReader> Engine::readerOf(DiscTree tree) {
  Drive* drive = findIdle(tree.letter);
  return drive != nullptr ? readerIn(*drive, tree.session) : nullptr;
}

std::vector<DiscSession> Engine::sessionsOf(char letter) {
  Drive* drive = findIdle(letter);
  return drive != nullptr ? drive->sessions() : std::vector<DiscSession>();
}

std::uint8_t Engine::do_DiscIs() {
  return selected_ != nullptr ? selected_->state().type : 0;
}

std::int16_t Engine::do_Writable() {
  return selected_ != nullptr && selected_->state().writable ? 1 : 0;
}

int Engine::do_Erasable() {
  return selected_ != nullptr && selected_->state().erasable ? -1 : 0;
}

std::uint8_t Engine::do_SessionsOnDisc() {
  if (selected_ == nullptr) return 0;
  return static_cast<std::uint8_t>(std::min(selected_->state().sessions, 255));
}

std::int32_t Engine::do_GetTotalBlocksOnDisc() {
  return selected_ != nullptr ? blocks32(selected_->state().totalBlocks) : 0;
}

std::int32_t Engine::do_GetFreeBlocksOnDisc() {
  return selected_ != nullptr ? blocks32(selected_->state().freeBlocks) : 0;
}

std::int32_t Engine::do_GetBlocksWithoutRoom() {
  return selected_ != nullptr ? blocks32(selected_->state().withoutRoom) : 0;
}

// The layout.

void Engine::do_ClearAll() {
  if (preparing_) return;
  release_.take(std::exchange(layout_, std::make_shared<IsoLayout>(clock_)));
  release_.take(std::exchange(prepared_, nullptr));
  switches_ = {};
  label_.clear();
  volumeSet_.clear();
  import_ = false;
  release_.take(std::exchange(earlier_, nullptr));
  planned_.reset();
}

int Engine::do_ImportSession(std::uint8_t, const std::string&, const std::function<bool()>& pump) {
  import_ = false;
  release_.take(std::exchange(earlier_, nullptr));
  if (!mayTouch() || !selected_->isReady()) {
    setError(NoDisc, "No disc");
    return 0;
  }
  std::string why;
  const TrackPlace place = selected_->place();
  if (place.lastSession >= 0)
    earlier_ = takeEarlier(place, pump, why);
  else
    why = "There are no earlier sessions";
  if (!earlier_) {
    setError(PreparationFailed, why);
    return 0;
  }
  earlierStart_ = place.lastSession;
  import_ = true;
  return -1;
}

std::shared_ptr<EarlierImage> Engine::takeEarlier(const TrackPlace& place,
                                                  const std::function<bool()>& pump,
                                                  std::string& why) {
  std::shared_ptr<EarlierImage> earlier;
  std::atomic<bool> stop = false;
  EarlierTree tree(libraries_, selected_->openBlocks(),
                   static_cast<std::uint32_t>(place.lastSession), stop);
  preparing_ = true;
  try {
    runAside(
        [&] {
          release_.wait();
          earlier = tree.take(why);
        },
        [&] { stop = (pump && pump()) || stop; });
  } catch (const std::exception&) {
    why = "Out of memory";
  }
  preparing_ = false;
  return earlier;
}

void Engine::do_CreateDir(const std::string& parent, const std::string& name) {
  layout_->createDir(parent, name);
}

void Engine::do_CreateDirLike(const std::string& parent, const std::string& name,
                              const std::string& source) {
  layout_->createDir(parent, name, source);
}

void Engine::do_InsertFileWithName(const std::string& parent, const std::string& source,
                                   const std::string& name, const std::string&, int part,
                                   std::int64_t firstBlock, std::int64_t remainder,
                                   std::int64_t wholeGiB) {
  IsoLayout::Range range;
  if (part != 0) {
    constexpr std::int64_t Most = std::numeric_limits<std::int64_t>::max() / GiB - 1;
    // What no file can be so large for becomes a range that no file has.
    const bool sane = firstBlock >= 0 && firstBlock < Most && remainder >= 0 && remainder < GiB &&
                      wholeGiB >= 0 && wholeGiB < Most;
    range.offset = sane ? firstBlock * BlockBytes : -1;
    range.length = sane ? wholeGiB * GiB + remainder : 0;
  }
  layout_->insert({parent, name, source, range, std::exchange(planned_, std::nullopt)});
}

std::vector<SourceFinding> Engine::do_MeasureSources(const std::function<bool()>& pump) {
  // The front end works meanwhile, and must not empty the layout.
  preparing_ = true;
  std::vector<SourceFinding> findings = layout_->measure(pump);
  preparing_ = false;
  return findings;
}

FileInfo Engine::do_GetMeasuredSource(std::int32_t file) {
  const SourceState* state = file < 0 ? nullptr : layout_->measured(static_cast<std::size_t>(file));
  return state != nullptr ? state->toInfo() : FileInfo();
}

void Engine::do_LeaveOutSource(std::int32_t file) {
  if (file >= 0) layout_->leaveOut(static_cast<std::size_t>(file));
}

std::int32_t Engine::do_Prepare(const std::function<bool()>& pump) {
  release_.take(std::exchange(prepared_, nullptr));
  imageSize_ = 0;
  if (selected_ == nullptr || isBusy(selected_) || !selected_->isReady()) {
    setError(NoDisc, "No disc");
    return 0;
  }
  const TrackPlace place = selected_->place();
  if (place.refuses) {
    setError(PreparationFailed, "The disc takes no track");
    return 0;
  }
  IsoLayout::Request request{.libraries = libraries_};
  request.startBlock = static_cast<std::uint32_t>(place.startBlock);
  request.gap = place.gap;
  request.joliet = switches_.joliet;
  request.skipFaults = switches_.skipAtPreparation;
  request.replace = switches_.replace;
  request.pump = pump;
  request.release = &release_;
  request.faultListName = switches_.faultListName;
  request.faultListBytes = switches_.faultListBytes;
  request.roomBlocks = selected_->state().freeBlocks;
  if (import_ && place.lastSession >= 0) {
    if (earlierStart_ == place.lastSession) request.earlier = std::exchange(earlier_, nullptr);
    request.openEarlier = [this] { return selected_->openBlocks(); };
    request.earlierStart = static_cast<std::uint32_t>(place.lastSession);
  }
  std::string why;
  preparing_ = true;
  try {
    prepared_ = layout_->prepare(std::move(request), why);
  } catch (const std::exception&) {
    why = "Out of memory";
  }
  preparing_ = false;
  if (!prepared_) {
    setError(PreparationFailed, why);
    return 0;
  }
  imageSize_ = blocks32(prepared_->imageBlocks());
  return 1;
}

std::int32_t Engine::do_GetImageSize() {
  return imageSize_;
}

// Burning and erasing.

int Engine::do_Burn(FinishCallback finished, FileErrorCallback fileError, int,
                    const std::string& logFile) {
  if (work_ || !prepared_ || selected_ == nullptr || !selected_->isReady()) {
    setError(NoDisc, "No disc");
    return 0;
  }
  const TrackPlace place = selected_->place();
  const DiscState state = selected_->state();
  if (place.startBlock != prepared_->startBlock || prepared_->imageBlocks() > state.freeBlocks) {
    setError(ENOSPC, "The track does not fit on the disc");
    return 0;
  }
  std::string why;
  if (!selected_->beginBurn(why)) {
    setError(BurnRun::WriteFailed, why);
    return 0;
  }
  setError(0, {});
  skipped_.clear();
  auto work = std::make_unique<Work>();
  work->drive = selected_;
  work->finished = std::move(finished);
  work->fileError = std::move(fileError);
  work->logFile = logFile;
  prepared_->context.skipFaults = switches_.skipAtBurn;
  work->burn = std::make_unique<BurnRun>(
      std::move(prepared_), place,
      BurnOptions{label_, volumeSet_, switches_.finalize, switches_.underrunProof,
                  switches_.calibrate, switches_.simulate});
  work_ = std::move(work);
  deliverable_ = std::exchange(work_->burn->track().leftOut, {});
  return -1;
}

void Engine::do_AbortBurn() {
  if (work_ && work_->burn) work_->burn->abort();
}

std::int32_t Engine::do_GetBlocksWritten() {
  return work_ && work_->burn ? blocks32(work_->burn->blocksWritten()) : 0;
}

std::int16_t Engine::do_EraseDisc(int quick, FinishCallback finished) {
  if (work_ || selected_ == nullptr || !selected_->beginErase()) {
    const std::string problem = selected_ != nullptr ? selected_->problem() : std::string();
    setError(NoDisc, problem.empty() ? "The disc cannot be erased" : problem);
    return 0;
  }
  setError(0, {});
  work_ = std::make_unique<Work>();
  work_->drive = selected_;
  work_->finished = std::move(finished);
  work_->eraseThread = std::thread([work = work_.get(), quick] {
    work->eraseResult = work->drive->erase(quick != 0);
    work->eraseDone = true;
  });
  return -1;
}

void Engine::do_Deliver() {
  if (!work_) return;
  if (work_->burn) {
    const bool done = work_->burn->isDone();  // before the faults: none comes afterwards
    std::vector<FileFault> faults = std::exchange(deliverable_, {});
    for (FileFault& fault : work_->burn->track().context.takeFaults())
      faults.push_back(std::move(fault));
    deliverFaults(faults);
    if (!done) return;
    DriveResult result = work_->burn->result();
    work_->drive->endBurn(result);
    deliverEnd(result);
  } else if (work_->eraseDone) {
    const DriveResult result = work_->eraseResult;
    work_->drive->endErase(result);
    deliverEnd(result);
  }
}

void Engine::deliverFaults(const std::vector<FileFault>& faults) {
  if (faults.empty()) return;
  std::ofstream log;
  if (!work_->logFile.empty()) log.open(work_->logFile, std::ios::app);
  const FileErrorCallback tell = work_->fileError;
  for (const FileFault& fault : faults) {
    skipped_.push_back(fault);
    log << fault.source << ": " << fault.reason << '\n';
    if (tell) tell(0, 0);
  }
}

void Engine::deliverEnd(const DriveResult& result) {
  // The callback may start the next work, so this one is over before.
  const FinishCallback finished = std::move(work_->finished);
  release_.take(std::shared_ptr<const BurnRun>(std::move(work_->burn)));
  work_.reset();
  if (result.error != 0) setError(result.error, result.text);
  const std::int32_t code = result.error & 0xFFFF;
  if (finished) finished(result.error != 0 && code == 0 ? 1 : code, 0);
}

}  // namespace korvenal
