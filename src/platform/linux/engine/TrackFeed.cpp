#include "platform/linux/engine/TrackFeed.h"

#include <algorithm>
#include <cstring>

namespace korvenal {

namespace {

constexpr std::size_t PieceBytes = 262144;

}  // namespace

TrackFeed::TrackFeed(burn::burn_source* tree)
    : tree_(tree), piece_(PieceBytes), left_(tree->get_size(tree)), fixedSize_(left_) {
  // One reference more than the track gives back: the library must not free what it did not make.
  source_.refcount = 2;
  source_.read = read;
  source_.get_size = size;
  source_.set_size = setSize;
  source_.free_data = leave;
  source_.data = this;
}

TrackFeed::~TrackFeed() {
  cancel();
  burn::burn_source_free(tree_);
}

void TrackFeed::cancel() {
  if (cancelled_) return;
  cancelled_ = true;
  tree_->cancel(tree_);
}

int TrackFeed::read(burn::burn_source* source, unsigned char* buffer, int size) {
  return static_cast<TrackFeed*>(source->data)->take(buffer, size);
}

off_t TrackFeed::size(burn::burn_source* source) {
  return static_cast<TrackFeed*>(source->data)->fixedSize_;
}

int TrackFeed::setSize(burn::burn_source* source, off_t size) {
  static_cast<TrackFeed*>(source->data)->fixedSize_ = size;
  return 1;
}

int TrackFeed::take(unsigned char* buffer, int size) {
  int done = 0;
  while (done < size) {
    if (used_ == held_) {
      // Never more than there is: the tree's source takes a short piece for its end.
      const auto wanted = static_cast<int>(std::min<off_t>(left_, PieceBytes));
      if (wanted == 0) break;
      const int got = tree_->read != nullptr ? tree_->read(tree_, piece_.data(), wanted)
                                             : tree_->read_xt(tree_, piece_.data(), wanted);
      if (got <= 0) return done > 0 ? done : got;
      used_ = 0;
      held_ = static_cast<std::size_t>(got);
      left_ -= got;
    }
    const auto piece = std::min(held_ - used_, static_cast<std::size_t>(size - done));
    std::memcpy(buffer + done, piece_.data() + used_, piece);
    used_ += piece;
    done += static_cast<int>(piece);
  }
  return done;
}

}  // namespace korvenal
