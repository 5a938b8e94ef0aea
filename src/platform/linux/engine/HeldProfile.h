#pragma once

#include <string>
#include <string_view>

#include "platform/linux/Descriptor.h"

namespace korvenal {

/// Room on the disk for a profile that must be written at a time when the disk may be full: without
/// it, a disc that was burned to its end would count as spoilt.
class HeldProfile {
 public:
  HeldProfile() = default;
  /// Gives the room back.
  ~HeldProfile() { drop(); }
  HeldProfile(const HeldProfile&) = delete;
  HeldProfile& operator=(const HeldProfile&) = delete;

  /// Holds room beside the profile for a text of up to so many bytes. 0, or the errno.
  int hold(const std::string& profileFile, std::size_t bytes);
  /// Puts the text in the place of the profile; at any moment the old one or the new one is there.
  /// Nothing is held afterwards. 0, or the errno.
  int store(std::string_view text);
  void drop();

 private:
  std::string profileFile_;
  std::string path_;  ///< of the file that holds the room; empty for none
  Descriptor file_;
};

}  // namespace korvenal
