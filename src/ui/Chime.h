#pragma once

#include <cstdint>
#include <string>

struct ca_context;

namespace korvenal::ui {

/// Plays sound files through the desktop's sound service; without one it stays silent.
class Chime {
 public:
  Chime() = default;
  ~Chime();
  Chime(const Chime&) = delete;
  Chime& operator=(const Chime&) = delete;

  /// Returns at once. A sound that is still playing is cut off.
  void play(const std::string& file);

 private:
  ca_context* context_ = nullptr;  ///< owned; made at the first sound
};

}  // namespace korvenal::ui
