#include "platform/linux/engine/MmcDrive.h"

#include <cerrno>
#include <utility>

#include "platform/BurnEngine.h"
#include "platform/linux/engine/LibburnDevice.h"
#include "platform/linux/engine/PatientDevice.h"

namespace korvenal {

/// The blocks of the disc that was in the drive when this was made.
class MmcDrive::Blocks : public BlockReader {
 public:
  explicit Blocks(MmcDrive& drive) : drive_(drive), disc_(drive.report_) {}

  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override {
    return drive_.readFrom(disc_, first, count, buffer);
  }

 private:
  MmcDrive& drive_;
  MmcReport disc_;
};

MmcDrive::MmcDrive(char letter, std::unique_ptr<MmcDevice> device)
    : letter_(letter), device_(std::move(device)) {}

std::string MmcDrive::problem() const {
  if (!device_->isPresent()) return {};
  const std::string refusal = device_->refusal();
  return refusal.empty() ? problem_ : refusal;
}

std::string MmcDrive::devicePath() const {
  return device_->isPresent() ? device_->devicePath() : std::string();
}

bool MmcDrive::can(std::uint8_t code) {
  if (profiles_.empty()) {
    const bool heldBefore = device_->isHeld();
    if (hold()) profiles_ = device_->profiles();
    // A question about the drive alone leaves its tray to the person.
    if (!heldBefore) release();
  }
  return MmcFacts::can(code, profiles_);
}

bool MmcDrive::hold() {
  if (!device_->isPresent()) {
    // Plugged in again it may be another drive.
    if (!busy_) device_->release();
    profiles_.clear();
    problem_.clear();
    erased_ = false;
    return false;
  }
  if (busy_) return false;
  if (device_->isHeld()) return true;
  if (!device_->hold(problem_)) return false;
  problem_.clear();
  const MmcReport before = std::exchange(report_, device_->report());
  if (report_ != before) dropReaders();
  chain_ = {};
  // Some drives do not read what was only formatted.
  if (MmcFacts::isOverwritable(report_.profile) && !erased_) {
    Blocks blocks(*this);
    chain_ = readSessionChain(blocks);
  }
  // Discs of a set may be alike in all that a drive says of them.
  if (!readers_.isEmpty() && readHead() != head_) dropReaders();
  return true;
}

std::int64_t MmcDrive::newestStart() const {
  const std::int64_t newest = MmcFacts::placeOf(report_, chain_).lastSession;
  // On discs that are written anywhere block 0 leads to the newest tree.
  return newest >= 0 && MmcFacts::isOverwritable(report_.profile) ? 0 : newest;
}

std::vector<std::uint8_t> MmcDrive::readHead() {
  constexpr std::uint32_t Descriptor = 16;  // tells the moment of the burn, among others
  const std::int64_t start = newestStart();
  std::vector<std::uint8_t> block(static_cast<std::size_t>(BlockBytes));
  if (start < 0 ||
      readFrom(report_, static_cast<std::uint32_t>(start) + Descriptor, 1, block.data()) != 1)
    return {};
  return block;
}

bool MmcDrive::isReady() {
  if (busy_ || !device_->isPresent()) return false;
  if (device_->tray() != MmcDevice::Tray::Loaded) {
    erased_ = false;
    device_->release();
    return false;
  }
  return hold() && report_.medium != MmcReport::Medium::None;
}

void MmcDrive::lock(bool locked) {
  // The library locks what it holds, and unlocks what it gives back.
  if (locked) {
    hold();
  } else {
    // The stop button frees the tray: nobody waits for its disc any more.
    device_->giveUpWaiting();
    release();
  }
}

void MmcDrive::release() {
  if (!busy_) device_->release();
}

void MmcDrive::eject() {
  // A reader that waits for its blocks must not lose them.
  if (busy_ || device_->isOccupied() || !device_->isPresent()) return;
  dropReaders();
  erased_ = false;
  device_->release();
  device_->openTray();
}

void MmcDrive::load() {
  if (busy_ || !device_->isPresent()) return;
  device_->release();
  device_->closeTray();
}

DiscState MmcDrive::state() {
  return busy_ || hold() ? MmcFacts::stateOf(report_, chain_) : DiscState();
}

void MmcDrive::setSpeed(std::int32_t read, std::int32_t write) {
  if (hold()) device_->setSpeed(read, write);
}

std::int32_t MmcDrive::writeSpeed(std::int32_t wanted) {
  return busy_ || hold() ? MmcFacts::speedFor(wanted, report_.writeSpeeds) : 0;
}

std::int32_t MmcDrive::readSpeed(std::int32_t wanted) {
  return busy_ || hold() ? MmcFacts::speedFor(wanted, report_.readSpeeds) : 0;
}

std::int64_t MmcDrive::readFrom(const MmcReport& disc, std::uint32_t first, std::uint32_t count,
                                std::uint8_t* buffer) {
  if (busy_) return -EBUSY;
  if (!device_->isHeld()) {
    // Only a look: what else hangs on the disc is settled at the next question about it.
    if (!device_->isPresent() || !device_->hold(problem_)) return -ENXIO;
    if (device_->report() != disc) {
      device_->release();
      return -ENXIO;
    }
  } else if (report_ != disc) {
    return -ENXIO;
  }
  return device_->read(first, count, buffer);
}

std::vector<DiscSession> MmcDrive::sessions() {
  if (busy_ || !hold()) return {};
  if (readers_.sessions().empty()) {
    Blocks blocks(*this);
    // Handlers may run meanwhile, and find none.
    auto sessions = readSessions(blocks, MmcFacts::sessionStarts(report_, chain_));
    if (sessions.empty()) return {};
    head_ = readHead();
    readers_.keepSessions(std::move(sessions));
  }
  return readers_.sessions();
}

std::shared_ptr<DiscReader> MmcDrive::reader(const DiscLibraries& libraries, ReaderAid aid,
                                             std::optional<std::uint32_t> session) {
  if (busy_ || !hold()) return nullptr;
  const std::int64_t newest = newestStart();
  if (newest < 0) return nullptr;
  if (auto kept = readers_.find(session)) return kept;
  if (session) sessions();
  if (!readers_.isKnown(session)) return nullptr;
  const std::uint32_t start = session.value_or(static_cast<std::uint32_t>(newest));
  auto reader = DiscReader::open(libraries, openBlocks(), start, aid);
  if (reader) head_ = readHead();
  // While its head was read, a handler may have opened one as well.
  if (auto kept = readers_.find(session)) return kept;
  readers_.keep(session, reader);
  return reader;
}

std::unique_ptr<BlockReader> MmcDrive::openBlocks() {
  return hold() ? std::make_unique<Blocks>(*this) : nullptr;
}

TrackPlace MmcDrive::place() {
  TrackPlace place;
  if (!busy_ && !hold()) return place;
  place = MmcFacts::placeOf(report_, chain_);
  place.handle = device_->handle();
  place.roomBlocks = state().freeBlocks;
  return place;
}

bool MmcDrive::beginBurn(std::string& why) {
  if (busy_ || !hold()) {
    why = problem_;
    return false;
  }
  dropReaders();
  busy_ = true;
  return true;
}

void MmcDrive::endBurn(DriveResult&) {
  busy_ = false;
  erased_ = false;
  device_->release();
}

bool MmcDrive::beginErase() {
  if (busy_ || !hold() || !state().erasable) return false;
  dropReaders();
  busy_ = true;
  return true;
}

DriveResult MmcDrive::erase(bool quick) {
  return device_->erase(MmcFacts::eraseKindOf(report_, quick), quick,
                        MmcFacts::stateOf(report_, chain_).totalBlocks);
}

void MmcDrive::endErase(const DriveResult& result) {
  busy_ = false;
  erased_ = result.error == 0;
  device_->release();
}

std::vector<std::unique_ptr<Drive>> makeMmcDrives(SlowCalls& calls) {
  std::vector<std::unique_ptr<Drive>> drives;
  for (char letter = 'D'; letter <= 'U'; ++letter)
    drives.push_back(std::make_unique<MmcDrive>(
        letter, std::make_unique<PatientDevice>(
                    std::make_unique<LibburnDevice>("sr" + std::to_string(letter - 'D')), calls)));
  return drives;
}

}  // namespace korvenal
