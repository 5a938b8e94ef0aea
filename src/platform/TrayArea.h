#pragma once

#include <string>

namespace korvenal {

/// The part of the desktop where programs keep small icons while their windows are hidden. Failures
/// are not reported.
class TrayArea {
 public:
  virtual ~TrayArea() = default;

  /// False on a desktop that has none: a window hidden there could not be brought back.
  virtual bool isPresent() const = 0;
  /// Adds the program's icon with a tip; one that is there already only gets the tip.
  virtual void doAddIcon(const std::string& tip) = 0;
  virtual void doRemoveIcon() = 0;
  /// A short notice beside the icon that goes away by itself. Nothing without an icon.
  virtual void doNotify(const std::string& text) = 0;
};

}  // namespace korvenal
