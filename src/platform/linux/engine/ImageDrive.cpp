#include "platform/linux/engine/ImageDrive.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/BurnEngine.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/engine/FaultyBlocks.h"
#include "platform/linux/engine/SessionChain.h"
#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr std::int64_t MaxProfileBytes = 65536;
constexpr int EraseFailed = 1032;
constexpr int RecordFailed = 14848;  ///< "Disc writing failed."
/// Left on the disk of the images, for what the program itself must still write.
constexpr std::int64_t KeptBytes = 1 << 20;
/// More than the profile of a disc grows by one session.
constexpr std::size_t ProfileGrowth = 256;

bool isSameFile(const FileInfo& a, const FileInfo& b) {
  return a.kind == b.kind && a.inode == b.inode && a.modified == b.modified &&
         a.modifiedNanoseconds == b.modifiedNanoseconds && a.size == b.size;
}

std::string systemText(int error) {
  return std::system_category().message(error);
}

}  // namespace

ImageDrive::ImageDrive(Files& files, Identity identity, Changed changed)
    : files_(files), identity_(identity), changed_(std::move(changed)) {}

std::optional<DiscProfile> ImageDrive::profileOf(Files& files, const std::string& image) {
  const FileInfo info = files.doGetInfo(image);
  if (info.kind != FileInfo::Kind::File) return std::nullopt;
  const std::string profileFile = profileFileOf(image);
  if (!files.doFileExists(profileFile)) {
    const std::int64_t blocks = info.size.whole() / BlockBytes;
    return blocks > 0 ? std::optional(DiscProfile::pressed(blocks)) : std::nullopt;
  }
  const auto text = files.readAll(profileFile, MaxProfileBytes);
  auto profile = text ? DiscProfile::parse(*text) : std::nullopt;
  if (profile && profile->writing) profile->failWriting();
  return profile;
}

void ImageDrive::setTray(const std::string& image, bool open) {
  lock_.release();
  dropReaders();
  profile_.reset();
  holdsOther_.reset();
  image_ = image;
  open_ = open;
  locked_ = false;
  *pulled_ = false;
  const DiscProfile* disc = profile();
  questionsUntilReady_ = disc != nullptr ? disc->faults.notReady : 0;
}

bool ImageDrive::can(std::uint8_t code) {
  constexpr std::uint8_t FirstDvd = 13;
  constexpr std::uint8_t DualLayer = 18;
  if (code == DualLayer) return identity_.ability == DriveAbility::WritesDualLayer;
  return code >= FirstDvd && code < DualLayer && identity_.ability >= DriveAbility::WritesDvd;
}

bool ImageDrive::writes(std::uint8_t type) const {
  if (type == DiscCdR || type == DiscCdRw) return identity_.ability >= DriveAbility::WritesCd;
  if (type == DiscDvdPlusRDl) return identity_.ability == DriveAbility::WritesDualLayer;
  return identity_.ability >= DriveAbility::WritesDvd;
}

DiscProfile* ImageDrive::profile() {
  if (*pulled_ && !open_) {
    setTray(image_, true);
    changed_();
  }
  if (image_.empty() || open_) return nullptr;
  // The image may have been taken away behind the program's back.
  if (!busy_ && !files_.doFileExists(image_)) {
    forgetDisc();
    return nullptr;
  }
  // Another program may have written the disc since it was looked at.
  if (!busy_) {
    const FileInfo file = files_.doGetInfo(profileFileOf(image_));
    if (!isSameFile(file, profileSeen_)) forgetDisc();
    profileSeen_ = file;
  }
  if (!profile_) profile_ = profileOf(files_, image_);
  return profile_ ? &*profile_ : nullptr;
}

void ImageDrive::forgetDisc() {
  dropReaders();
  holdsOther_.reset();
  profile_.reset();
}

bool ImageDrive::storeProfile(std::string& why) {
  const FileOutcome outcome = files_.writeAll(profileFileOf(image_), profile_->toText());
  why = outcome.text;
  profileSeen_ = files_.doGetInfo(profileFileOf(image_));
  return static_cast<bool>(outcome);
}

void ImageDrive::lock(bool locked) {
  locked_ = locked;
  if (!busy_) settleLock();
}

/// While the tray is locked, a run reads the disc or is about to write it.
void ImageDrive::settleLock() {
  if (locked_ && !image_.empty() && !open_)
    lock_.take(image_, ImageUse::Read);
  else
    lock_.release();
}

std::string ImageDrive::problem() const {
  const bool inUse = !image_.empty() && !open_ && elsewhere() != ImageUse::None;
  return inUse ? inUseText() : std::string();
}

std::string ImageDrive::inUseText() const {
  return "The disc " + image_ + " is in use by another program";
}

std::string ImageDrive::devicePath() const {
  return "IMAGE#CDROM&VEN_Image&PROD_Drive_" + std::to_string(identity_.number) + "&REV_1#" +
         identity_.letter;
}

bool ImageDrive::isReady() {
  if (busy_ || profile() == nullptr || elsewhere() == ImageUse::Written) return false;
  if (questionsUntilReady_ == 0) return true;
  --questionsUntilReady_;
  return false;
}

void ImageDrive::eject() {
  if (busy_ || locked_ || open_) return;
  setTray(image_, true);
  changed_();
}

void ImageDrive::load() {
  if (busy_ || !open_) return;
  setTray(image_, false);
  changed_();
}

DiscState ImageDrive::state() {
  DiscState state;
  const DiscProfile* disc = profile();
  if (disc == nullptr) return state;
  state.type = disc->type;
  state.erasable = DiscTypes::isRewritable(disc->type) && writes(disc->type);
  // What can be erased can take data again, whatever it holds now.
  state.writable = state.erasable || (disc->isAppendable() && writes(disc->type));
  state.sessions = disc->sessionsTold();
  state.totalBlocks = disc->capacity;
  state.freeBlocks = std::min(disc->freeBlocks(), roomBlocks(*disc));
  state.withoutRoom = disc->freeBlocks() - state.freeBlocks;
  if (holdsOther()) {
    state.sessions = std::max(state.sessions, 1);
    state.freeBlocks = 0;
  }
  return state;
}

bool ImageDrive::holdsOther() {
  const DiscProfile* disc = profile();
  if (busy_ || disc == nullptr || disc->end != 0) return false;
  if (!holdsOther_) {
    // A tree is left from an erase that was broken off.
    const bool isEmpty = files_.doGetFileSize(image_) <= Fixed4();
    const auto blocks = isEmpty ? nullptr : openBlocks();
    holdsOther_ = !isEmpty && (!blocks || (!readVolumeHead(*blocks, 0) && !isHeadEmpty(*blocks)));
  }
  return *holdsOther_;
}

/// Blocks that the disk of the image has room for.
std::int64_t ImageDrive::roomBlocks(const DiscProfile& disc) const {
  const auto volume = files_.doGetVolumeInfo(image_);
  if (!volume) return disc.capacity;
  // What lies behind the end is cut off before a burn.
  const std::int64_t behind = files_.doGetFileSize(image_).whole() - disc.end * BlockBytes;
  const std::int64_t bytes =
      volume->freeBytes.whole() + std::max<std::int64_t>(behind, 0) - KeptBytes;
  return std::max<std::int64_t>(bytes / BlockBytes, 0);
}

std::int32_t ImageDrive::speedFor(std::int32_t wanted) {
  const DiscProfile* disc = profile();
  const std::int32_t maximum = disc != nullptr ? DiscTypes::maxSpeed(disc->type) : 0;
  return wanted > 0 ? std::min(wanted, maximum) : maximum;
}

std::vector<DiscSession> ImageDrive::sessions() {
  const DiscProfile* disc = busy_ ? nullptr : profile();
  if (disc == nullptr || disc->sessions.empty()) return {};
  if (readers_.sessions().empty())
    if (const auto blocks = openBlocks())
      readers_.keepSessions(readSessions(*blocks, startsOn(*blocks, *disc)));
  return readers_.sessions();
}

std::vector<std::uint32_t> ImageDrive::startsOn(BlockReader& blocks, const DiscProfile& disc) {
  // An image whose profile was left behind still has all its sessions.
  return disc.sessions.front() == 0 ? readSessionChain(blocks).starts : disc.sessions;
}

std::shared_ptr<DiscReader> ImageDrive::reader(const DiscLibraries& libraries, ReaderAid aid,
                                               std::optional<std::uint32_t> session) {
  if (busy_) return nullptr;
  const DiscProfile* disc = profile();
  if (disc == nullptr || disc->sessions.empty()) return nullptr;
  if (auto kept = readers_.find(session)) return kept;
  if (session) sessions();
  if (!readers_.isKnown(session)) return nullptr;
  // Block 0 points to the newest complete tree, whoever wrote the image.
  readers_.keep(session, DiscReader::open(libraries, openBlocks(), session.value_or(0), aid));
  return readers_.find(session);
}

std::unique_ptr<BlockReader> ImageDrive::openBlocks() {
  auto blocks = openImageBlocks(image_);
  const DiscProfile* disc = profile();
  if (!blocks || disc == nullptr) return nullptr;
  const DiscFaults& faults = disc->faults;
  if (faults.badBlock < 0 && faults.pullAfter < 0) return blocks;
  return std::make_unique<FaultyBlocks>(std::move(blocks), faults.badBlock, faults.pullAfter,
                                        pulled_);
}

TrackPlace ImageDrive::place() {
  TrackPlace place;
  const bool hidden = holdsOther();
  const DiscProfile* disc = profile();
  if (disc == nullptr) return place;
  place.imageFile = image_;
  place.address = "stdio:" + image_;
  place.startBlock = disc->nextSession();
  if (disc->end == 0) place.gap = place.startBlock;
  if (!disc->sessions.empty()) place.lastSession = disc->sessions.back();
  place.overwritable = true;
  place.refuses = disc->faults.prepare != 0 || hidden;
  place.failAfter = disc->faults.burnAfter;
  place.failNumber = static_cast<int>(disc->faults.number);
  return place;
}

/// Locks the disc for writing. What was settled for it must still hold then.
bool ImageDrive::beginWriting(std::string& why) {
  const DiscProfile* disc = profile();
  if (disc == nullptr || busy_ || !writes(disc->type)) return false;
  const std::string before = disc->toText();
  if (!lock_.take(image_, ImageUse::Written)) {
    why = inUseText();
    return false;
  }
  disc = profile();
  if (disc != nullptr && disc->toText() == before) return true;
  why = "Another program has written the disc " + image_;
  settleLock();
  return false;
}

bool ImageDrive::beginBurn(std::string& why) {
  if (!beginWriting(why)) return false;
  DiscProfile& disc = *profile_;
  // What lies behind the end is left from a burn or an erase that was broken off.
  if (::truncate(image_.c_str(), static_cast<off_t>(disc.end * BlockBytes)) != 0 &&
      errno != EACCES && errno != EPERM && errno != EROFS)
    why = systemText(errno);
  // The room for the end first: a disc that is marked as being written cannot go back without it.
  const std::size_t bytes = disc.toText().size() + ProfileGrowth;
  if (const int error = why.empty() ? held_.hold(profileFileOf(image_), bytes) : 0; error != 0)
    why = systemText(error);
  disc.writing = true;
  if (why.empty() && storeProfile(why)) {
    dropReaders();
    busy_ = true;
    return true;
  }
  disc.writing = false;
  held_.drop();
  settleLock();
  return false;
}

void ImageDrive::endBurn(DriveResult& result) {
  busy_ = false;
  holdsOther_.reset();
  if (profile_) recordBurn(result);
  held_.drop();
  settleLock();
}

void ImageDrive::recordBurn(DriveResult& result) {
  const std::int64_t start = profile_->nextSession();
  profile_->writing = false;
  if (!result.touched) {
    // As it was.
  } else if (result.error == 0) {
    profile_->sessions.push_back(static_cast<std::uint32_t>(start));
    profile_->end = result.endBlock;
    profile_->closed = result.closeDisc && !DiscTypes::isOverwritable(profile_->type);
  } else {
    profile_->failWriting();
    // The room goes back to the disk, which may have run full and must still take the records.
    if (::truncate(image_.c_str(), static_cast<off_t>(profile_->end * BlockBytes)) != 0)
      profile_->damaged = true;
  }
  const int error = held_.store(profile_->toText());
  profileSeen_ = files_.doGetInfo(profileFileOf(image_));
  if (error == 0) return;
  // From now on the disc is what its profile says: that of a burn that never ended.
  forgetDisc();
  if (result.error != 0) return;
  result.error = RecordFailed;
  result.text = profileFileOf(image_) + ": " + systemText(error);
}

bool ImageDrive::beginErase() {
  std::string why;
  if (!state().erasable || !beginWriting(why)) return false;
  // First in the profile: an erase that is broken off has taken place as far as anyone can tell.
  beforeErase_ = *profile_;
  profile_->erase();
  if (!storeProfile(why)) {
    profile_ = beforeErase_;
    settleLock();
    return false;
  }
  dropReaders();
  busy_ = true;
  return true;
}

DriveResult ImageDrive::erase(bool quick) {
  // Full and quick are the same here: what is cut off a file cannot be read again.
  static_cast<void>(quick);
  DriveResult result;
  if (profile_->faults.erase != 0) {
    result.error =
        profile_->faults.number != 0 ? static_cast<int>(profile_->faults.number) : EraseFailed;
    result.text = "The disc cannot be erased";
    return result;
  }
  const Descriptor file(::open(image_.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file || ::ftruncate(file.get(), 0) != 0 || ::fsync(file.get()) != 0) {
    result.error = errno;
    result.text = std::system_category().message(result.error);
  }
  return result;
}

void ImageDrive::endErase(const DriveResult& result) {
  busy_ = false;
  holdsOther_.reset();
  if (profile_ && result.error != 0) {
    profile_ = beforeErase_;
    profile_->failWriting();
    std::string why;
    storeProfile(why);
  }
  settleLock();
}

}  // namespace korvenal
