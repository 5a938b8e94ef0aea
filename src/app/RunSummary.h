#pragma once

#include <optional>
#include <string>
#include <vector>

#include "device/DeviceSettings.h"
#include "job/Job.h"
#include "platform/Fixed4.h"

namespace korvenal {

/// What the restore page is set to.
struct RestoreSummary {
  std::string jobName;
  bool hasSelection = false;
  std::string selectionText;  ///< count and size of what is selected
  std::string modeText;       ///< caption of the chosen `RestoreOpt`
  bool SkipSystem = false;
  bool SkipOpen = false;
  bool OnlyRestoreFile = false;
  std::string target;               ///< folder; empty when not defined
  std::optional<Fixed4> freeBytes;  ///< of the target's volume, when it reports them
  std::string mountPoint;           ///< of that volume
};

/// The lines that open a run page, with their marks, as the events of the page show them. A first
/// line with the mark '*' says that the action cannot start.
std::vector<std::string> backupSummary(const Job& job, const DeviceSettings& devices);
std::vector<std::string> restoreSummary(const RestoreSummary& restore,
                                        const DeviceSettings& devices);
std::vector<std::string> eraseSummary(bool quick, const DeviceSettings& devices);

}  // namespace korvenal
