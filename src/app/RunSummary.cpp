#include "app/RunSummary.h"

#include "core/SizeText.h"

namespace korvenal {

namespace {

using Lines = std::vector<std::string>;

std::string yesNo(bool value) {
  return value ? "YES" : "NO";
}

std::string deviceLine(const DeviceSettings& devices) {
  return devices.DriveLetters.empty() ? "*Device mode: <Nil>"
                                      : "Device mode:  " + devices.DeviceName;
}

void addJobName(Lines& lines, const std::string& name) {
  if (!name.empty()) lines.push_back("Job name:  " + name);
}

void addPressLine(Lines& lines, const std::string& button) {
  lines.push_back("Press [" + button + "] button to start action.");
}

}  // namespace

std::vector<std::string> backupSummary(const Job& job, const DeviceSettings& devices) {
  const bool ready = job.hasItems();
  Lines lines = {ready ? "$Ready to burn backup to disc." : "*Backup data contents is empty.",
                 deviceLine(devices)};
  addJobName(lines, job.txJobName);
  lines.push_back("%Backup type:  " + job.backupTypeText() + " backup");
  lines.push_back("%Backup disc type:  " + job.discTypeText());
  lines.push_back("%Finalize disc:  " + yesNo(job.FinalizeDisc));
  lines.push_back("%Erase rewriatable disc:  " + yesNo(job.AutoErase));
  lines.push_back("%Skip error file:  " + yesNo(job.SkipError));
  if (devices.DeviceMode < 2) {
    const auto eject = devices.DeviceMode == 0 ? devices.SingleEject : devices.MultiEject;
    lines.push_back("%Eject disc on action done:  " + yesNo(eject != 0));
  }
  if (devices.DeviceMode > 0) {
    const auto limit = devices.DeviceMode == 1 ? devices.MultiErrorMax : devices.AutoloaderErrorMax;
    lines.push_back("%Stop action on disc error counted:  " + std::to_string(limit));
  }
  lines.push_back("%Burn ResoreKit Installer:  " + yesNo(job.BurnRestoreKit));
  if (ready) addPressLine(lines, "Backup");
  return lines;
}

std::vector<std::string> restoreSummary(const RestoreSummary& restore,
                                        const DeviceSettings& devices) {
  Lines lines = {
      restore.hasSelection ? "$Ready to restore from disc." : "*No file selected to be restored.",
      deviceLine(devices)};
  addJobName(lines, restore.jobName);
  lines.push_back("%Restore mode:  " + restore.modeText);
  if (restore.SkipSystem) lines.push_back("%Skip system file:  YES");
  if (restore.SkipOpen) lines.push_back("%Skip opened file:  YES");
  if (restore.OnlyRestoreFile) lines.push_back("%Only restore file:  YES");
  if (!restore.hasSelection) return lines;

  lines.push_back("?" + restore.selectionText);
  lines.push_back("?Restore to:  " +
                  (restore.target.empty() ? "<Not defined>" : "\"" + restore.target + "\""));
  if (!restore.target.empty() && restore.freeBytes)
    lines.push_back("?Free space in drive " + restore.mountPoint + "  " +
                    formatSizeText(*restore.freeBytes, true) + ".");
  addPressLine(lines, "Restore");
  return lines;
}

std::vector<std::string> eraseSummary(bool quick, const DeviceSettings& devices) {
  Lines lines = {"$Ready to erase rewritable disc.", deviceLine(devices)};
  lines.push_back(std::string("Erase mode:  ") + (quick ? "Quick - Up to 3 minutes each disc."
                                                        : "Full - Up to 40 minutes each disc."));
  addPressLine(lines, "Erase");
  return lines;
}

}  // namespace korvenal
