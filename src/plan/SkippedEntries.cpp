#include "plan/SkippedEntries.h"

#include <algorithm>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t ShownOwnFiles = 5;

struct Kind {
  WalkSkip reason;
  const char* one;
  const char* many;
};

constexpr Kind CountedKinds[] = {{WalkSkip::LinkToFolder, " link to a folder", " links to folders"},
                                 {WalkSkip::BrokenLink, " broken link", " broken links"},
                                 {WalkSkip::Socket, " socket", " sockets"},
                                 {WalkSkip::Pipe, " pipe", " pipes"},
                                 {WalkSkip::Device, " device", " devices"}};

void addPart(std::string& list, const std::string& part) {
  if (part.empty()) return;
  if (!list.empty()) list += ", ";
  list += part;
}

}  // namespace

void SkippedEntries::add(WalkSkip reason, const std::string& path) {
  ++counts_[static_cast<std::size_t>(reason)];
  if (reason == WalkSkip::UnreadableFolder) unreadable_.push_back(path);
  if (reason == WalkSkip::LeftOut) own_.push_back(path);
  if (reason == WalkSkip::Gone) addMissing(path);
}

void SkippedEntries::addExcludedName(const std::string& path) {
  ++excludedCount_;
  if (excludedNames_.size() < ShownNames) excludedNames_.push_back(path);
}

int SkippedEntries::missed() const {
  return static_cast<int>(missing_.size() + takenNames_.size() + unreadable_.size()) +
         excludedCount_;
}

std::string SkippedEntries::ownFiles() const {
  if (own_.empty()) return {};
  // An item within another meets them twice.
  std::vector<std::string> paths = own_;
  std::sort(paths.begin(), paths.end());
  paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
  std::string shown;
  for (std::size_t i = 0; i < std::min(paths.size(), ShownOwnFiles); ++i) addPart(shown, paths[i]);
  if (paths.size() > ShownOwnFiles)
    shown += " and " + std::to_string(paths.size() - ShownOwnFiles) + " more";
  return "this program's own files (" + shown + ")";
}

std::string SkippedEntries::passedOver() const {
  std::string list;
  for (const Kind& kind : CountedKinds) {
    const int count = counts_[static_cast<std::size_t>(kind.reason)];
    if (count != 0) addPart(list, std::to_string(count) + (count == 1 ? kind.one : kind.many));
  }
  addPart(list, ownFiles());
  return list;
}

std::vector<std::string> SkippedEntries::notes() const {
  std::vector<std::string> lines;
  for (const std::string& path : missing_) lines.push_back("Not existing, not backed up: " + path);
  for (const std::string& path : takenNames_)
    lines.push_back("Another item has its name on disc, not backed up:  " + path);
  if (const std::string list = passedOver(); !list.empty())
    lines.push_back("Not backed up:  " + list + ".");
  for (const std::string& path : unreadable_)
    lines.push_back("Folder not readable, its contents are not backed up:  " + path);
  if (excludedCount_ == 0) return lines;
  lines.push_back("Excluded, because no disc can hold the name:  " +
                  Text::counted(excludedCount_, "item") + ".");
  for (const std::string& path : excludedNames_)
    lines.push_back("Name not possible on a disc, not backed up:  " + path);
  return lines;
}

}  // namespace korvenal
