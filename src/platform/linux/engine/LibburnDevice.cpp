#include "platform/linux/engine/LibburnDevice.h"

#include <fcntl.h>
#include <libburn/libburn.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <optional>
#include <sstream>
#include <thread>

#include "platform/BurnEngine.h"
#include "platform/Text.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/engine/BurnRun.h"
#include "platform/linux/engine/DiscLibraries.h"
#include "platform/linux/engine/LibburnOptions.h"

namespace korvenal {

namespace {

using namespace std::chrono_literals;

constexpr auto LookEvery = 50ms;
constexpr auto LongestSpinUp = 30s;
/// Overwritable discs are written in pieces that no kind of them objects to.
constexpr std::int64_t PieceBlocks = 512;
constexpr std::int64_t AlignBlocks = 16;

std::string contentOf(const std::string& file) {
  std::ifstream stream(file);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

/// The node opened beside the library, for its tray. No disc needs to be in.
Descriptor openNode(const std::string& node) {
  return Descriptor(::open(node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

MmcReport::Medium mediumOf(burn::burn_drive* drive) {
  switch (burn::burn_disc_get_status(drive)) {
    case burn::BURN_DISC_BLANK:
      return MmcReport::Medium::Blank;
    case burn::BURN_DISC_APPENDABLE:
      return MmcReport::Medium::Appendable;
    case burn::BURN_DISC_FULL:
      return MmcReport::Medium::Full;
    case burn::BURN_DISC_UNSUITABLE:
      return MmcReport::Medium::Unsuitable;
    default:
      return MmcReport::Medium::None;
  }
}

/// How much room there is depends on how it would be written.
void tellRoom(burn::burn_drive* drive, MmcReport& report) {
  const LibburnOptionsPtr options(burn::burn_write_opts_new(drive));
  if (options && MmcFacts::isCd(report.profile))
    burn::burn_write_opts_set_write_type(options.get(), burn::BURN_WRITE_TAO,
                                         burn::BURN_BLOCK_MODE1);
  report.freeBlocks = burn::burn_disc_available_space(drive, options.get()) / BlockBytes;
  int start = 0;
  int next = 0;
  if (report.medium == MmcReport::Medium::Appendable &&
      burn::burn_disc_track_lba_nwa(drive, options.get(), 0, &start, &next) == 1)
    report.nextBlock = std::max(next, 0);
}

/// The first block of a session; nothing when the drive does not tell.
std::optional<std::uint32_t> startOf(burn::burn_session* session) {
  int count = 0;
  burn::burn_track** tracks = burn::burn_session_get_tracks(session, &count);
  if (tracks == nullptr || count < 1) return std::nullopt;
  burn::burn_toc_entry entry{};
  burn::burn_track_get_entry(tracks[0], &entry);
  const bool told = (entry.extensions_valid & 1) != 0 && entry.start_lba >= 0;
  return told ? std::optional(static_cast<std::uint32_t>(entry.start_lba)) : std::nullopt;
}

void tellSessions(burn::burn_drive* drive, MmcReport& report) {
  burn::burn_disc* disc = burn::burn_drive_get_disc(drive);
  if (disc == nullptr) return;
  burn::burn_session** sessions = burn::burn_disc_get_sessions(disc, &report.sessions);
  for (int i = 0; sessions != nullptr && i < report.sessions; ++i)
    if (const auto start = startOf(sessions[i])) report.sessionStarts.push_back(*start);
  burn::burn_disc_free(disc);
  int start = 0;
  if (report.sessions > 0 && burn::burn_disc_get_msc1(drive, &start) == 1)
    report.lastSession = start;
}

void tellFormat(burn::burn_drive* drive, MmcReport& report) {
  int status = 0;
  off_t bytes = 0;
  unsigned extra = 0;
  int formats = 0;
  if (burn::burn_disc_get_formats(drive, &status, &bytes, &extra, &formats) != 1) return;
  report.formatBlocks = bytes / BlockBytes;
  if (status == BURN_FORMAT_IS_UNFORMATTED) report.format = MmcReport::Format::Unformatted;
  if (status == BURN_FORMAT_IS_FORMATTED) report.format = MmcReport::Format::Formatted;
}

void tellSpeeds(burn::burn_drive* drive, MmcReport& report) {
  burn::burn_speed_descriptor* list = nullptr;
  if (burn::burn_drive_get_speedlist(drive, &list) == 1) {
    for (const auto* speed = list; speed != nullptr; speed = speed->next) {
      if (speed->write_speed > 0) report.writeSpeeds.push_back(speed->write_speed);
      if (speed->read_speed > 0) report.readSpeeds.push_back(speed->read_speed);
    }
    burn::burn_drive_free_speedlist(&list);
  }
  const int write = burn::burn_drive_get_write_speed(drive);
  const int read = burn::burn_drive_get_read_speed(drive);
  if (report.writeSpeeds.empty() && write > 0) report.writeSpeeds.push_back(write);
  if (report.readSpeeds.empty() && read > 0) report.readSpeeds.push_back(read);
}

void waitUntilIdle(burn::burn_drive* drive) {
  burn::burn_progress progress{};
  while (burn::burn_drive_get_status(drive, &progress) != burn::BURN_DRIVE_IDLE)
    std::this_thread::sleep_for(LookEvery);
}

/// Writes zeros to the first `blocks` blocks.
bool clear(burn::burn_drive* drive, std::int64_t blocks) {
  std::vector<char> zeros(static_cast<std::size_t>(PieceBlocks * BlockBytes));
  const std::int64_t end = blocks / AlignBlocks * AlignBlocks;
  for (std::int64_t block = 0; block < end; block += PieceBlocks) {
    const std::int64_t count = std::min(PieceBlocks, end - block);
    const int flush = block + count == end ? 1 : 0;
    if (burn::burn_random_access_write(drive, block * BlockBytes, zeros.data(), count * BlockBytes,
                                       flush) != 1)
      return false;
  }
  return end > 0;
}

}  // namespace

LibburnDevice::LibburnDevice(std::string node)
    : node_(std::move(node)), address_("/dev/" + node_) {}

std::string LibburnDevice::said(const std::string& what) const {
  return contentOf("/sys/class/block/" + node_ + "/device/" + what);
}

bool LibburnDevice::isPresent() const {
  return node_.empty() || ::access(address_.c_str(), F_OK) == 0;
}

std::string LibburnDevice::refusal() const {
  if (node_.empty() || ::access(address_.c_str(), R_OK | W_OK) == 0) return {};
  return "You have no permission to use " + address_;
}

std::string LibburnDevice::devicePath() const {
  return MmcFacts::devicePathOf(said("vendor"), said("model"), said("rev"), node_);
}

bool LibburnDevice::isBurner() const {
  // A drive that the table does not know is believed to write; the disc tells in the end.
  return node_.empty() ||
         MmcFacts::writesDiscs(contentOf("/proc/sys/dev/cdrom/info"), node_).value_or(true);
}

MmcDevice::Tray LibburnDevice::tray() {
  if (node_.empty()) return Tray::Loaded;
  const Descriptor node = openNode(address_);
  switch (node ? ::ioctl(node.get(), CDROM_DRIVE_STATUS, CDSL_CURRENT) : -1) {
    case CDS_TRAY_OPEN:
      return Tray::Open;
    case CDS_NO_DISC:
      return Tray::Empty;
    case CDS_DISC_OK:
    case CDS_NO_INFO:  // a drive that cannot tell: the disc will
      return Tray::Loaded;
    default:
      return Tray::NotReady;
  }
}

void LibburnDevice::openTray() {
  const Descriptor node = openNode(address_);
  if (node) ::ioctl(node.get(), CDROMEJECT);
}

void LibburnDevice::closeTray() {
  waiting_ = true;
  {
    const Descriptor node = openNode(address_);
    if (!node || ::ioctl(node.get(), CDROMCLOSETRAY) != 0) return;
  }
  const auto end = std::chrono::steady_clock::now() + LongestSpinUp;
  while (waiting_ && tray() == Tray::NotReady && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(LookEvery);
}

bool LibburnDevice::hold(std::string& why) {
  if (grabbed_) return true;
  why = refusal();
  if (!why.empty()) return false;
  grabbed_ = grabDrive(address_);
  if (grabbed_) return true;
  why = isPresent() ? "The drive " + address_ + " is in use by another program"
                    : "The drive " + address_ + " is not connected any more";
  DiscLibraries::takeFailures();
  return false;
}

std::vector<int> LibburnDevice::profiles() {
  constexpr std::size_t Most = 64;
  std::array<int, Most> profiles{};
  std::array<char, Most> current{};
  int count = 0;
  burn::burn_drive_get_all_profiles(handle(), &count, profiles.data(), current.data());
  return {profiles.begin(), profiles.begin() + std::clamp(count, 0, static_cast<int>(Most))};
}

MmcReport LibburnDevice::report() {
  MmcReport report;
  burn::burn_drive* drive = handle();
  std::array<char, 80> name{};
  if (burn::burn_disc_get_profile(drive, &report.profile, name.data()) != 1) report.profile = 0;
  report.medium = mediumOf(drive);
  if (report.medium == MmcReport::Medium::None) return report;
  report.erasable = burn::burn_disc_erasable(drive) != 0;
  int capacity = 0;
  if (burn::burn_get_read_capacity(drive, &capacity, 0) == 1) report.readableBlocks = capacity;
  tellRoom(drive, report);
  tellSessions(drive, report);
  tellFormat(drive, report);
  tellSpeeds(drive, report);
  DiscLibraries::takeFailures();  // what a drive cannot answer is no failure of the next burn
  return report;
}

std::int64_t LibburnDevice::read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) {
  constexpr int NoMessages = 2;
  off_t got = 0;
  const int result = burn::burn_read_data(handle(), std::int64_t{first} * BlockBytes,
                                          reinterpret_cast<char*>(buffer),
                                          std::int64_t{count} * BlockBytes, &got, NoMessages);
  const std::int64_t blocks = got / BlockBytes;
  return result == 1 || blocks > 0 ? blocks : -EIO;
}

void LibburnDevice::setSpeed(std::int32_t read, std::int32_t write) {
  burn::burn_drive_set_speed(handle(), read, write);
}

DriveResult LibburnDevice::erase(EraseKind kind, bool quick, std::int64_t blocks) {
  constexpr int DefaultSize = 3 << 1;
  constexpr std::int64_t QuickBlocks = PieceBlocks;  // with all that a look for other contents sees
  burn::burn_drive* drive = handle();
  DiscLibraries::takeFailures();
  bool well = false;
  if (kind == EraseKind::Blank || kind == EraseKind::Format) {
    // The library erases only what it takes for full.
    if (kind == EraseKind::Blank && mediumOf(drive) == MmcReport::Medium::Blank)
      burn::burn_disc_pretend_full_uncond(drive);
    if (kind == EraseKind::Blank)
      burn::burn_disc_erase(drive, quick ? 1 : 0);
    else
      burn::burn_disc_format(drive, 0, DefaultSize);
    waitUntilIdle(drive);
    well = burn::burn_drive_wrote_well(drive) == 1;
  } else {
    well = clear(drive, kind == EraseKind::ClearHead ? std::min(QuickBlocks, blocks) : blocks);
  }
  return failureOf(DiscLibraries::takeFailures(), well, "The disc cannot be erased");
}

}  // namespace korvenal
