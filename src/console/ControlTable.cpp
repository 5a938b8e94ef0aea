#include "console/ControlTable.h"

#include <cctype>

#include "console/ConsoleDesktop.h"
#include "console/Session.h"
#include "core/Workspace.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

constexpr int MaxDays = 9999;
constexpr int Boxes = 4;

std::string flagText(bool on) {
  return on ? "1" : "0";
}

using FlagSetter = void (JobControls::*)(bool);
using IndexSetter = bool (JobControls::*)(int);

Control flagControl(const std::string& name, bool& field, JobControls& controls,
                    FlagSetter setter) {
  return {name, [&field] { return flagText(field); },
          [&controls, setter](const std::string& text) {
            const auto on = parseFlag(text);
            if (on) (controls.*setter)(*on);
            return on.has_value();
          }};
}

/// A choice by its index, shown with its text.
Control choiceControl(const std::string& name, std::function<std::string()> value,
                      JobControls& controls, IndexSetter setter) {
  constexpr int AnyIndex = 1000;
  return {name, std::move(value), [&controls, setter](const std::string& text) {
            const auto index = parseNumber(text, 0, AnyIndex);
            return index && (controls.*setter)(*index);
          }};
}

Control fieldFlag(const std::string& name, bool& field) {
  return {name, [&field] { return flagText(field); },
          [&field](const std::string& text) {
            const auto on = parseFlag(text);
            if (on) field = *on;
            return on.has_value();
          }};
}

/// As in the field: the number that the text begins with counts. Here it works the box as well.
bool setDays(JobControls& controls, const std::string& text) {
  const std::int64_t days = Text::toInteger(text);
  if (days > MaxDays) return false;
  const std::string_view typed = Text::trim(text);
  const bool isNumber = !typed.empty() && std::isdigit(static_cast<unsigned char>(typed[0])) != 0;
  if (isNumber) controls.setDateFilter(days > 0);
  controls.setDays(text);
  return true;
}

bool setJobName(JobControls& controls, const std::string& text) {
  if (text.empty() || text.find_first_of(ForbiddenChars) != std::string::npos) return false;
  controls.setJobName(text);
  return true;
}

}  // namespace

std::vector<Control> backupControls(frmMain& main) {
  Job& job = main.job;
  JobControls& set = main.jobControls;
  std::vector<Control> controls;
  controls.push_back({"txJobName", [&job] { return job.txJobName; },
                      [&set](const std::string& text) { return setJobName(set, text); }});
  controls.push_back(choiceControl(
      "optBackupType",
      [&job] { return std::to_string(job.optBackupType) + " " + job.backupTypeText(); }, set,
      &JobControls::setBackupType));
  controls.push_back(
      flagControl("chkDateFilter", job.chkDateFilter, set, &JobControls::setDateFilter));
  controls.push_back({"txDateFilter", [&job] { return job.txDateFilter; },
                      [&set](const std::string& text) { return setDays(set, text); }});
  for (int box = 0; box < Boxes; ++box) {
    controls.push_back({"chkAttribute(" + std::to_string(box) + ")",
                        [&job, box] { return flagText(job.chkAttribute[std::size_t(box)]); },
                        [&set, box](const std::string& text) {
                          const auto on = parseFlag(text);
                          return on && set.setAttribute(box, *on);
                        }});
  }
  controls.push_back({"comboInclude", [&job] { return job.comboInclude; },
                      [&set](const std::string& text) {
                        set.setInclude(text);
                        return true;
                      }});
  controls.push_back({"comboExclude", [&job] { return job.comboExclude; },
                      [&set](const std::string& text) {
                        set.setExclude(text);
                        set.doLeaveExclude();
                        return true;
                      }});
  controls.push_back(choiceControl(
      "comboDiscType",
      [&job] { return std::to_string(job.comboDiscType) + " " + job.discTypeText(); }, set,
      &JobControls::setDiscType));
  controls.push_back(choiceControl(
      "optFileSystem",
      [&job] {
        return std::to_string(job.optFileSystem) + " " +
               FileSystemTexts[static_cast<std::size_t>(job.optFileSystem)];
      },
      set, &JobControls::setFileSystem));
  controls.push_back(choiceControl(
      "optSplitAndSpan", [&job] { return std::to_string(job.optSplitAndSpan); }, set,
      &JobControls::setSplitAndSpan));
  controls.push_back({"FileSize", [&job] { return job.FileSize; },
                      [&set](const std::string& text) { return set.setFileSize(text); }});
  controls.push_back({"DiscSize", [&job] { return job.DiscSize; },
                      [&set](const std::string& text) { return set.setDiscSize(text); }});
  controls.push_back(
      flagControl("FinalizeDisc", job.FinalizeDisc, set, &JobControls::setFinalizeDisc));
  controls.push_back(flagControl("AutoErase", job.AutoErase, set, &JobControls::setAutoErase));
  controls.push_back(flagControl("SkipError", job.SkipError, set, &JobControls::setSkipError));
  controls.push_back(
      flagControl("BurnBackupIndex", job.BurnBackupIndex, set, &JobControls::setBurnBackupIndex));
  controls.push_back(
      flagControl("BurnRestoreKit", job.BurnRestoreKit, set, &JobControls::setBurnRestoreKit));
  return controls;
}

std::vector<Control> restoreControls(frmMain& main) {
  RestorePage& page = main.restorePage;
  constexpr int LastMode = 3;
  return {
      {"txRestoreTo", [&page] { return page.txRestoreTo; },
       [&page](const std::string& text) {
         page.txRestoreTo = absolutePath(text);
         return true;
       }},
      {"RestoreOpt",
       [&page] {
         return std::to_string(page.RestoreOpt) + " " +
                RestoreOptTexts[static_cast<std::size_t>(page.RestoreOpt)];
       },
       [&page](const std::string& text) {
         const auto mode = parseNumber(text, 0, LastMode);
         if (mode) page.RestoreOpt = *mode;
         return mode.has_value();
       }},
      fieldFlag("SkipSystem", page.SkipSystem),
      fieldFlag("SkipOpen", page.SkipOpen),
      fieldFlag("OnlyRestoreFile", page.OnlyRestoreFile),
  };
}

}  // namespace korvenal::console
