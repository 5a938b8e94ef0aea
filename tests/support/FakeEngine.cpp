#include "support/FakeEngine.h"

#include <algorithm>

namespace korvenal::test {

bool FakeEngine::fails(const std::string& name) {
  return failing[name].contains(++called_[name]);
}

int FakeEngine::count(const std::string& call) const {
  return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& one) {
    return one == call || one.starts_with(call + " ");
  }));
}

void FakeEngine::do_Deliver() {
  clock_.milliseconds += millisecondsATurn;
  if (task_ == Task::None) {
    state_ = 0;
    return;
  }
  ++turns_;
  if (task_ == Task::Burn) written_ = trackBlocks() * (turns_ - 1) / turnsABurn;
  if (turns_ <= turnsABurn && !aborted_) return;
  const bool good = !aborted_ && (finishCode & 0xFFFF) == 0;
  if (task_ == Task::Erase && good) disc() = {.type = disc().type, .erasable = true};
  if (task_ == Task::Erase && good && disc().type == 10) disc().sessions = 1;
  if (task_ == Task::Burn && good) doCommitTrack();
  task_ = Task::None;
  finished_(aborted_ ? 77 : finishCode, 0);
}

void FakeEngine::doCommitTrack() {
  if (fails("session")) return;
  FakeDisc& target = disc();
  for (const LaidOut& file : layout_) {
    if (file.leftOut) continue;
    target.files[file.path] = file.bytes;
    if (!unreadable.contains(file.source)) continue;
    skipped_.push_back({file.path, file.source, "Input/output error"});
    fileError_(1, 0);
  }
  target.usedBlocks += std::max(0, trackBlocks() - blockLoss);
  target.sessions = target.type == 10 ? 1 : target.sessions + 1;
  target.label = label_;
}

int FakeEngine::do_SelectDeviceByLetter(char letter) {
  if (!drives.contains(letter) || fails("do_SelectDeviceByLetter")) return 0;
  selected_ = letter;
  return 1;
}

int FakeEngine::do_TestUnitReady() {
  const Drive& drive = drives[selected_];
  return drive.disc && !drive.open && !fails("do_TestUnitReady");
}

void FakeEngine::do_EjectMedium() {
  calls.push_back("do_EjectMedium " + std::string(1, selected_));
  if (!drives[selected_].locked) drives[selected_].open = true;
}

void FakeEngine::do_LoadMedium() {
  calls.emplace_back("do_LoadMedium");
  drives[selected_].open = loseDiscAtLoad;
}

void FakeEngine::do_SetDeviceSpeed(std::int32_t, std::int32_t write) {
  note("do_SetDeviceSpeed", write);
  if (write > 0) writeSpeed = write;
}

std::uint8_t FakeEngine::do_SessionsOnDisc() {
  return static_cast<std::uint8_t>(disc().sessions);
}

void FakeEngine::do_ClearAll() {
  layout_.clear();
  skipped_.clear();
  label_.clear();
}

int FakeEngine::do_ImportSession(std::uint8_t, const std::string& path,
                                 const std::function<bool()>&) {
  calls.push_back("do_ImportSession " + path);
  return !fails("do_ImportSession");
}

void FakeEngine::do_CreateDir(const std::string& parent, const std::string& name) {
  calls.push_back("do_CreateDir " + parent + " " + name);
}

void FakeEngine::do_InsertFileWithName(const std::string& parent, const std::string& source,
                                       const std::string& name, const std::string&, int part,
                                       std::int64_t firstBlock, std::int64_t remainder,
                                       std::int64_t wholeGiB) {
  const std::int64_t length = wholeGiB * 1073741824 + remainder;
  calls.push_back("do_InsertFileWithName " + parent + " " + name + " part " + std::to_string(part) +
                  " " + std::to_string(firstBlock) + " " + std::to_string(remainder) + " " +
                  std::to_string(wholeGiB) + " of " + std::to_string(planned_.size) +
                  (planned_.modified ? " dated" : ""));
  layout_.push_back({parent == "\\" ? name : parent + "\\" + name, source,
                     part == 0 ? planned_.size : length, planned_});
}

std::vector<SourceFinding> FakeEngine::do_MeasureSources(const std::function<bool()>& pump) {
  std::vector<SourceFinding> findings;
  for (std::size_t at = 0; at < layout_.size() && look && !pump(); ++at) {
    LaidOut& file = layout_[at];
    if (file.leftOut || file.found.kind == FileInfo::Kind::File) continue;
    const FileInfo now = look(file.source);
    const bool gone = now.kind == FileInfo::Kind::Missing;
    const bool whole = file.bytes == file.planned.size;
    if (!gone) file.found = now;
    if (!gone && whole) file.bytes = now.size.whole();
    if (gone || now.size != file.planned.size ||
        file.planned.modified.value_or(now.modified) != now.modified)
      findings.push_back({static_cast<std::int32_t>(at), now, gone ? "No such file" : ""});
  }
  return findings;
}

FileInfo FakeEngine::do_GetMeasuredSource(std::int32_t file) {
  return layout_.at(static_cast<std::size_t>(file)).found;
}

void FakeEngine::do_LeaveOutSource(std::int32_t file) {
  layout_.at(static_cast<std::size_t>(file)).leftOut = true;
}

std::int32_t FakeEngine::do_Prepare(const std::function<bool()>& pump) {
  return pump() || fails("do_Prepare") ? 0 : 1;
}

std::int32_t FakeEngine::do_GetImageSize() {
  return fails("do_GetImageSize") ? 0 : trackBlocks();
}

std::int32_t FakeEngine::trackBlocks() const {
  std::int64_t blocks = 100;
  for (const LaidOut& file : layout_)
    if (!file.leftOut) blocks += (file.bytes + BlockBytes - 1) / BlockBytes;
  return static_cast<std::int32_t>(blocks);
}

int FakeEngine::do_Burn(FinishCallback finished, FileErrorCallback fileError, int,
                        const std::string& logFile) {
  calls.push_back("do_Burn " + label_ + (logFile.empty() ? " without log" : ""));
  if (fails("do_Burn")) return 0;
  task_ = Task::Burn;
  turns_ = 0;
  written_ = 0;
  aborted_ = false;
  state_ = 1;
  finished_ = std::move(finished);
  fileError_ = std::move(fileError);
  return 1;
}

void FakeEngine::do_AbortBurn() {
  calls.emplace_back("do_AbortBurn");
  aborted_ = true;
}

std::int16_t FakeEngine::do_EraseDisc(int quick, FinishCallback finished) {
  note("do_EraseDisc", quick);
  if (fails("do_EraseDisc")) return 0;
  task_ = Task::Erase;
  turns_ = 0;
  aborted_ = false;
  state_ = 1;
  finished_ = std::move(finished);
  return 1;
}

}  // namespace korvenal::test
