#include "job/JobControls.h"

#include <algorithm>
#include <span>

#include "core/Settings.h"
#include "core/Workspace.h"
#include "job/TypedText.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view FirstDays = "90";

bool isChoice(std::span<const int> megabytes, std::int64_t value) {
  return std::find(megabytes.begin(), megabytes.end(), value) != megabytes.end();
}

}  // namespace

std::string cleanJobName(std::string_view text) {
  if (!Text::isUtf8(text)) return {};
  return std::string(Text::trim(typedText(text, Text::replaceAll(ForbiddenChars, ".", ""))));
}

std::string cleanFilter(std::string_view text) {
  return text.size() > MaxFilterBytes ? Text::doMidBytes(text, 1, MaxFilterBytes)
                                      : std::string(text);
}

void JobControls::setJobName(std::string_view text) {
  job_.txJobName = typedText(text, ForbiddenChars);
  job_.Modified = true;
}

bool JobControls::setBackupType(int option) {
  if (option < 0 || option > 1) return false;
  job_.optBackupType = option;
  job_.doMarkChanged(true);
  return true;
}

bool JobControls::setDiscType(int index) {
  if (index < 0 || index >= std::ssize(DiscTypeTexts)) return false;
  job_.comboDiscType = index;
  if (state_.IgnoreEvents) return true;
  if (index > 0) drives_.doCheckDevice(index);
  job_.Modified = true;
  return true;
}

bool JobControls::setFileSystem(int option) {
  if (option < 0 || option > 1) return false;
  job_.optFileSystem = option;
  job_.Modified = true;
  return true;
}

bool JobControls::setSplitAndSpan(int option) {
  if (option < 0 || option > 1) return false;
  job_.optSplitAndSpan = option;
  job_.doMarkChanged(true);
  return true;
}

bool JobControls::setFileSize(std::string_view text) {
  const std::int64_t megabytes = Text::toInteger(text);
  if (!isChoice(SplitFileMegabytes, megabytes)) return false;
  job_.FileSize = std::to_string(megabytes) + " MB";
  job_.Modified = true;
  return true;
}

bool JobControls::setDiscSize(std::string_view text) {
  const std::int64_t megabytes = Text::toInteger(text);
  if (!isChoice(SplitDiscMegabytes, megabytes)) return false;
  job_.DiscSize = std::to_string(megabytes) + " MB";
  job_.Modified = true;
  return true;
}

void JobControls::setFinalizeDisc(bool on) {
  job_.FinalizeDisc = on;
  job_.Modified = true;
}

void JobControls::setAutoErase(bool on) {
  job_.AutoErase = on;
  job_.Modified = true;
}

void JobControls::setSkipError(bool on) {
  job_.SkipError = on;
  job_.Modified = true;
}

void JobControls::setBurnBackupIndex(bool on) {
  job_.BurnBackupIndex = on;
  job_.doMarkChanged(true);
}

void JobControls::setBurnRestoreKit(bool on) {
  job_.BurnRestoreKit = on;
  job_.doMarkChanged(true);
}

void JobControls::setInclude(std::string_view text) {
  job_.comboInclude = text.empty() ? "*" : cleanFilter(text);
  job_.doMarkChanged(true);
}

void JobControls::setExclude(std::string_view text) {
  job_.comboExclude = cleanFilter(text);
  job_.doMarkChanged(true);
}

void JobControls::doLeaveExclude() {
  if (job_.comboExclude == "*") setExclude("");
}

void JobControls::setDateFilter(bool on) {
  job_.chkDateFilter = on;
  if (!on)
    job_.txDateFilter = "0";
  else if (job_.txDateFilter == "0")
    job_.txDateFilter = FirstDays;
  job_.doMarkChanged(true);
}

void JobControls::setDays(std::string_view text) {
  const std::int64_t days = std::clamp<std::int64_t>(Text::toInteger(text), 0, MaxFilterDays);
  job_.txDateFilter = std::to_string(days);
  job_.doMarkChanged(true);
}

bool JobControls::setAttribute(int box, bool on) {
  if (box < 0 || box >= std::ssize(job_.chkAttribute)) return false;
  job_.chkAttribute[static_cast<std::size_t>(box)] = on;
  job_.doMarkChanged(true);
  return true;
}

bool JobControls::setSubfolder(int row, bool on) {
  if (row < 1 || row >= job_.vsContents.Rows()) return false;
  if (job_.vsContents.check(row, ContentsSubfolder) == Table::Check::None) return false;
  job_.vsContents.setCheck(row, ContentsSubfolder,
                           on ? Table::Check::Ticked : Table::Check::Unticked);
  job_.doMarkChanged(true);
  return true;
}

}  // namespace korvenal
