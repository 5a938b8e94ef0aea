#include "plan/SkippedEntries.h"

namespace korvenal {

namespace {

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

}  // namespace

void SkippedEntries::add(WalkSkip reason, const std::string& path) {
  ++counts_[static_cast<std::size_t>(reason)];
  if (reason == WalkSkip::UnreadableFolder) unreadable_.push_back(path);
}

std::vector<std::string> SkippedEntries::notes() const {
  std::string numbers;
  for (const Kind& kind : CountedKinds) {
    const int count = counts_[static_cast<std::size_t>(kind.reason)];
    if (count == 0) continue;
    if (!numbers.empty()) numbers += ", ";
    numbers += std::to_string(count) + (count == 1 ? kind.one : kind.many);
  }
  std::vector<std::string> lines;
  if (!numbers.empty()) lines.push_back("Not backed up:  " + numbers + ".");
  for (const std::string& path : unreadable_)
    lines.push_back("Folder not readable, its contents are not backed up:  " + path);
  return lines;
}

}  // namespace korvenal
