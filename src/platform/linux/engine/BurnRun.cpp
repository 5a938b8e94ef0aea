#include "platform/linux/engine/BurnRun.h"

#include <fcntl.h>
#include <libburn/libburn.h>
#include <libisofs/libisofs.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "platform/BurnEngine.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/engine/LibburnOptions.h"
#include "platform/linux/engine/MmcFacts.h"
#include "platform/linux/engine/TrackFeed.h"

namespace korvenal {

namespace {

using namespace std::chrono_literals;

constexpr const char* ApplicationId = "KORVENAL TO DVD";
constexpr auto PollEvery = 5ms;
constexpr auto LongestFarewell = 5s;  ///< from the drive's idle state to the end of its worker

/// A disc with one session of one data track, as the burning library wants it told.
class DiscModel {
 public:
  DiscModel(burn::burn_source* source, std::int64_t tailBlocks) {
    burn::burn_track_define_data(track_, 0, static_cast<int>(tailBlocks * BlockBytes), 1,
                                 BURN_MODE1);
    ready_ = burn::burn_track_set_source(track_, source) == burn::BURN_SOURCE_OK &&
             burn::burn_disc_add_session(disc_, session_, BURN_POS_END) == 1 &&
             burn::burn_session_add_track(session_, track_, BURN_POS_END) == 1;
  }
  ~DiscModel() {
    burn::burn_track_free(track_);
    burn::burn_session_free(session_);
    burn::burn_disc_free(disc_);
  }
  DiscModel(const DiscModel&) = delete;
  DiscModel& operator=(const DiscModel&) = delete;

  bool isReady() const { return ready_; }
  burn::burn_disc* disc() const { return disc_; }
  off_t bytesWritten() const {
    off_t read = 0;
    off_t written = 0;
    burn::burn_track_get_counters(track_, &read, &written);
    return written;
  }

 private:
  burn::burn_disc* disc_ = burn::burn_disc_create();
  burn::burn_session* session_ = burn::burn_session_create();
  burn::burn_track* track_ = burn::burn_track_create();
  bool ready_ = false;
};

LibburnOptionsPtr writeOptions(burn::burn_drive* drive, const BurnOptions& wanted,
                               const TrackPlace& place) {
  LibburnOptionsPtr options(burn::burn_write_opts_new(drive));
  if (!options) return nullptr;
  burn::burn_write_opts_set_underrun_proof(options.get(), wanted.underrunProof ? 1 : 0);
  burn::burn_write_opts_set_perform_opc(options.get(), wanted.calibrate ? 1 : 0);
  burn::burn_write_opts_set_simulate(options.get(), wanted.simulate ? 1 : 0);
  if (place.overwritable)
    burn::burn_write_opts_set_start_byte(options.get(), place.startBlock * BlockBytes);
  else
    burn::burn_write_opts_set_multi(options.get(), wanted.closeDisc ? 0 : 1);
  // One flush of our own at the end instead of one every 16 MiB.
  if (!place.imageFile.empty()) burn::burn_write_opts_set_stdio_fsync(options.get(), -1);
  return options;
}

/// How the drive shall write. Some discs take a single session only, which closes them: that is
/// better than none.
bool chooseWriteMode(burn::burn_write_opts* options, const DiscModel& model, bool& closeDisc,
                     std::string& why) {
  std::array<char, BURN_REASONS_LEN> reasons{};
  const auto isPossible = [&] {
    return burn::burn_write_opts_auto_write_type(options, model.disc(), reasons.data(), 2) !=
           burn::BURN_WRITE_NONE;
  };
  if (isPossible()) return true;
  why = reasons.data();
  if (closeDisc) return false;
  burn::burn_write_opts_set_multi(options, 0);
  closeDisc = isPossible();
  return closeDisc;
}

/// Padding behind the track, as far as the disc has room for it.
std::int64_t tailOf(const TrackPlace& place, std::int64_t blocks) {
  return std::clamp<std::int64_t>(place.roomBlocks - blocks - 1, 0, place.tailBlocks);
}

Descriptor openImageForWriting(const std::string& file) {
  return Descriptor(::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
}

std::string textOf(int error) {
  return std::system_category().message(error);
}

}  // namespace

DriveResult failureOf(const std::vector<LibraryMessage>& failures, bool well,
                      const std::string& otherwise) {
  DriveResult result;
  const auto tell = [&result](int error, const std::string& text) {
    if (result.error != 0) return;  // the first cause counts
    result.error = error;
    result.text = text;
  };
  for (const LibraryMessage& failure : failures) {
    const auto sense = MmcFacts::senseOf(failure.text);
    if (sense) tell(sense->number != 0 ? sense->number : BurnRun::WriteFailed, sense->text);
  }
  for (const LibraryMessage& failure : failures)
    if (failure.osError != 0) tell(failure.osError, textOf(failure.osError));
  if (!failures.empty()) tell(BurnRun::WriteFailed, failures.front().text);
  if (!well) tell(BurnRun::WriteFailed, otherwise);
  return result;
}

BurnRun::BurnRun(std::shared_ptr<PreparedTrack> track, TrackPlace place, BurnOptions options)
    : track_(std::move(track)),
      place_(std::move(place)),
      options_(std::move(options)),
      thread_([this] { work(); }) {}

BurnRun::~BurnRun() {
  abort();
  wait();
}

void BurnRun::wait() {
  if (thread_.joinable()) thread_.join();
}

void BurnRun::abort() {
  aborted_ = true;
  track_->context.giveUp();
}

void BurnRun::fail(int error, const std::string& text) {
  if (result_.error != 0) return;  // the first cause counts
  result_.error = error;
  result_.text = text;
}

void BurnRun::failBy(const std::vector<LibraryMessage>& failures) {
  const DriveResult first = failureOf(failures, true, {});
  if (first.error != 0) fail(first.error, first.text);
}

void BurnRun::work() {
  result_.closeDisc = options_.closeDisc;
  result_.endBlock = place_.startBlock + track_->blocks;
  result_.touched = false;
  if (write() && !place_.imageFile.empty() && !options_.simulate) activate();
  if (aborted_ && result_.error != 0) {
    result_.error = Aborted;
    result_.text = textOf(Aborted);
  }
  done_ = true;
}

/// True once the disc has taken as much as it shall.
bool BurnRun::isFullByFault(std::int64_t written) const {
  return place_.failAfter >= 0 && written > place_.failAfter;
}

/// An image that refuses to be written is told before it counts as spoilt.
bool BurnRun::isImageWritable() {
  if (place_.imageFile.empty()) return true;
  if (openImageForWriting(place_.imageFile)) return true;
  fail(errno, textOf(errno));
  return false;
}

/// Follows the burn until the drive's worker has ended.
bool BurnRun::watch(burn::burn_drive* drive, TrackFeed& feed,
                    std::vector<LibraryMessage>& failures) {
  bool cancelled = false;
  bool ended = false;
  auto idleSince = std::chrono::steady_clock::time_point::max();
  for (;;) {
    ended = DiscLibraries::takeBurnMessages(failures) || ended;
    burn::burn_progress progress{};
    const auto status = burn::burn_drive_get_status(drive, &progress);
    if (progress.sector > 0 && progress.sectors > 0)
      written_ = std::max<std::int64_t>(
          written_, track_->gap + std::min<std::int64_t>(progress.sector, track_->blocks));
    if (status == burn::BURN_DRIVE_IDLE) {
      // The worker goes on for a moment; a burn begun in between would be refused in silence.
      const auto now = std::chrono::steady_clock::now();
      idleSince = std::min(idleSince, now);
      if (ended || now - idleSince > LongestFarewell) return cancelled;
    } else if ((aborted_ || !failures.empty() || isFullByFault(written_)) && !cancelled) {
      cancelled = true;
      burn::burn_drive_cancel(drive);
      feed.cancel();
    }
    std::this_thread::sleep_for(PollEvery);
  }
}

bool BurnRun::write() {
  std::vector<LibraryMessage> failures = DiscLibraries::takeFailures();
  failures.clear();  // what others left behind
  // Behind an import, which brings those of the earlier session.
  iso_image_set_volume_id(track_->image.get(), options_.label.c_str());
  iso_image_set_volset_id(track_->image.get(), options_.volumeSet.c_str());
  iso_image_set_application_id(track_->image.get(), ApplicationId);
  const WriteOptionsPtr treeOptions = track_->writeOptions();
  ::burn_source* tree = nullptr;
  if (!treeOptions ||
      iso_image_create_burn_source(track_->image.get(), treeOptions.get(), &tree) < 0) {
    failBy(DiscLibraries::takeFailures());
    fail(WriteFailed, "The image cannot be made");
    return false;
  }
  // Two headers declare the one C struct in different name spaces.
  TrackFeed feed(reinterpret_cast<burn::burn_source*>(tree));
  // A real drive is held by the one who gave the place.
  const GrabbedDrive image = place_.handle == nullptr ? grabDrive(place_.address) : nullptr;
  burn::burn_drive* drive = image ? handleOf(image) : place_.handle;
  const DiscModel model(feed.source(), tailOf(place_, track_->blocks));
  const LibburnOptionsPtr options =
      drive != nullptr ? writeOptions(drive, options_, place_) : nullptr;
  std::string why = "The drive cannot be used";
  if (!options || !model.isReady() ||
      !chooseWriteMode(options.get(), model, result_.closeDisc, why)) {
    failBy(DiscLibraries::takeFailures());
    fail(WriteFailed, why);
    return false;
  }
  if (!isImageWritable()) return false;
  if (aborted_) {
    fail(Aborted, textOf(Aborted));
    return false;
  }
  result_.touched = !options_.simulate;
  burn::burn_disc_write(options.get(), model.disc());

  const bool cancelled = watch(drive, feed, failures);
  DiscLibraries::takeBurnMessages(failures);
  if (isFullByFault(track_->imageBlocks()))
    fail(place_.failNumber != 0 ? place_.failNumber : WriteFailed, "Write error");
  failBy(failures);
  if (cancelled) fail(WriteFailed, "The burn was cancelled");
  if (burn::burn_drive_wrote_well(drive) != 1) fail(WriteFailed, "The drive reports a failure");
  if (model.bytesWritten() < track_->blocks * BlockBytes)
    fail(WriteFailed, "Not all of the track was written");
  if (result_.error == 0 && place_.handle != nullptr && place_.overwritable && !options_.simulate)
    activateOnDrive(drive);
  if (result_.error != 0) return false;
  written_ = track_->imageBlocks();
  return true;
}

/// Makes the finished track the one that readers of the disc find.
void BurnRun::activateOnDrive(burn::burn_drive* drive) {
  constexpr int Flush = 1;
  auto& head = track_->head;
  if (burn::burn_random_access_write(drive, 0, reinterpret_cast<char*>(head.data()),
                                     static_cast<off_t>(head.size()), Flush) == 1)
    return;
  failBy(DiscLibraries::takeFailures());
  fail(WriteFailed, "The drive reports a failure");
}

/// Makes the finished track the one that readers of the image find.
bool BurnRun::activate() {
  const Descriptor file = openImageForWriting(place_.imageFile);
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) {
    fail(errno, textOf(errno));
    return false;
  }
  if (status.st_size < (place_.startBlock + track_->blocks) * BlockBytes) {
    fail(WriteFailed, "The image is shorter than the track");
    return false;
  }
  // In this order no crash leaves a pointer to a track that is not all there.
  const auto& head = track_->head;
  if (::fsync(file.get()) != 0 ||
      ::pwrite(file.get(), head.data(), head.size(), 0) != static_cast<ssize_t>(head.size()) ||
      ::fsync(file.get()) != 0) {
    fail(errno != 0 ? errno : EIO, textOf(errno != 0 ? errno : EIO));
    return false;
  }
  return true;
}

}  // namespace korvenal
