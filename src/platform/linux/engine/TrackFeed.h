#pragma once

#include <libburn/libburn.h>

#include <vector>

namespace korvenal {

/// What the burning library reads a track from. It takes the bytes from the tree's own source in
/// large pieces, because a look into that one's buffer for every single block is dear.
class TrackFeed {
 public:
  /// Takes over the source of a tree whose generation has begun.
  explicit TrackFeed(burn::burn_source* tree);
  ~TrackFeed();
  TrackFeed(const TrackFeed&) = delete;
  TrackFeed& operator=(const TrackFeed&) = delete;

  /// For one track; this must outlive it.
  burn::burn_source* source() { return &source_; }
  /// Size of the whole track.
  off_t bytes() const { return fixedSize_; }
  /// Ends the generation; reads fail from then on. Allowed while a read waits on another thread.
  void cancel();

 private:
  static int read(burn::burn_source* source, unsigned char* buffer, int size);
  static off_t size(burn::burn_source* source);
  static int setSize(burn::burn_source* source, off_t size);
  static void leave(burn::burn_source*) {}
  int take(unsigned char* buffer, int size);

  burn::burn_source source_{};
  burn::burn_source* tree_;
  std::vector<unsigned char> piece_;
  std::size_t held_ = 0;
  std::size_t used_ = 0;
  off_t left_;  ///< bytes that the tree still has
  off_t fixedSize_;
  bool cancelled_ = false;
};

}  // namespace korvenal
