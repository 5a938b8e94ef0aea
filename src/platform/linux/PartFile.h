#pragma once

#include <string>

#include "platform/linux/Descriptor.h"

namespace korvenal {

/// A file in the making: it stands under a temporary name in its own folder, locked, until it is
/// whole. Destroying it closes it and leaves what is written under the temporary name. Operations
/// give 0 or an errno.
class PartFile {
 public:
  /// Makes the file, empty and for the user alone, in an open folder, which must stay open.
  int create(int folder);
  /// Replaces what stands at the name in the same folder, and closes the file.
  int finish(const std::string& name);
  /// Closes and deletes it. Nothing happens when it was finished.
  void remove();

  int descriptor() const { return file_.get(); }
  const std::string& name() const { return name_; }

  /// Deletes the files of this kind that no process holds, in a folder open for reading.
  static void clearLeftovers(int folder);

 private:
  bool isOurs() const;
  int replaceAfterClosing(const std::string& name);

  int folder_ = -1;
  Descriptor file_;
  std::string name_;  ///< empty: no file stands under a temporary name
};

}  // namespace korvenal
