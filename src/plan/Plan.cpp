#include "plan/Plan.h"

#include <algorithm>
#include <charconv>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t LengthBytes = 2;  ///< of a text's length in the arena

constexpr const char* Captions[PlanColumns] = {"Mark",
                                               "Flag",
                                               "File/Folder  Name  on Disc",
                                               "Origin Name",
                                               "Size",
                                               "Type",
                                               "Modified Date",
                                               "Backup Source Path",
                                               "Split #",
                                               "StartPos",
                                               "EndPos",
                                               "Disc#",
                                               "Disc Size Used"};

void appendNumber(std::string& out, std::int64_t number) {
  std::array<char, 20> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), end);
}

}  // namespace

PlanTable::PlanTable() {
  clear();
}

void PlanTable::clear() {
  rows_ = std::vector<Row>(1);
  ranges_ = std::vector<Range>(1);
  arena_ = std::vector<char>(LengthBytes, '\0');
  folders_ = std::vector<Folder>(DiscRoot + 1);
}

PlanTable::Link PlanTable::addText(std::string_view text) {
  if (text.empty()) return NoLink;
  text = Text::firstBytes(text, 0xFFFF);
  const auto link = static_cast<Link>(arena_.size());
  arena_.push_back(static_cast<char>(text.size() & 0xFF));
  arena_.push_back(static_cast<char>(text.size() >> 8));
  arena_.insert(arena_.end(), text.begin(), text.end());
  return link;
}

std::string_view PlanTable::textOf(Link link) const {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(arena_[at]); };
  const std::size_t length = byte(link) + (static_cast<std::size_t>(byte(link + 1)) << 8);
  return {arena_.data() + link + LengthBytes, length};
}

PlanTable::Link PlanTable::addFolder(const Folder& folder) {
  folders_.push_back(folder);
  Folder& added = folders_.back();
  added.renamed = added.name != added.original || folders_[added.parent].renamed;
  return static_cast<Link>(folders_.size() - 1);
}

void PlanTable::settleRenames() {
  // A folder is added after the one that holds it, so one pass settles all levels.
  for (std::size_t at = DiscRoot + 1; at < folders_.size(); ++at) {
    Folder& folder = folders_[at];
    folder.renamed = folder.name != folder.original || folders_[folder.parent].renamed;
  }
}

PlanTable::Link PlanTable::addRange(const Range& range) {
  ranges_.push_back(range);
  return static_cast<Link>(ranges_.size() - 1);
}

void PlanTable::dropEmptyRows() {
  rows_.erase(std::remove_if(rows_.begin() + 1, rows_.end(),
                             [](const Row& row) { return row.type == RowType::None; }),
              rows_.end());
}

void PlanTable::appendFolderPath(std::string& out, Link folder, bool original) const {
  const auto component = [&](Link at) {
    return textOf(original ? folders_[at].original : folders_[at].name);
  };
  std::size_t length = 0;
  for (Link at = folder; at > DiscRoot; at = folders_[at].parent)
    if (const std::size_t bytes = component(at).size(); bytes > 0) length += bytes + 1;

  // The way up gives the last component first, so the path is filled from its end.
  std::size_t end = out.size() + length;
  out.resize(end);
  for (Link at = folder; at > DiscRoot; at = folders_[at].parent) {
    const std::string_view text = component(at);
    if (text.empty()) continue;
    out[--end] = Paths::DiscSeparator;
    end -= text.size();
    text.copy(out.data() + end, text.size());
  }
}

void PlanTable::appendSourceFolder(std::string& out, Link folder) const {
  std::size_t length = 0;
  Link item = folder;
  for (; item > DiscRoot && folders_[item].source == NoLink; item = folders_[item].parent)
    length += textOf(folders_[item].original).size() + 1;
  if (item <= DiscRoot) return;

  out += textOf(folders_[item].source);
  if (out.empty() || out.back() != Paths::NativeSeparator) out += Paths::NativeSeparator;
  std::size_t end = out.size() + length;
  out.resize(end);
  for (Link at = folder; at != item; at = folders_[at].parent) {
    const std::string_view text = textOf(folders_[at].original);
    out[--end] = Paths::NativeSeparator;
    end -= text.size();
    text.copy(out.data() + end, text.size());
  }
}

void PlanTable::appendName(std::string& out, const Row& row) const {
  appendFolderPath(out, row.folder, false);
  out += textOf(row.name);
  if (isFolderOnDisc(row.type)) out += Paths::DiscSeparator;
}

void PlanTable::appendOrigin(std::string& out, const Row& row) const {
  if (row.type == RowType::Piece || row.type == RowType::RepeatedFolder) return;
  if (row.name == row.original && !folders_[row.folder].renamed) return;
  appendFolderPath(out, row.folder, true);
  out += textOf(row.original);
  if (row.type == RowType::Folder) out += Paths::DiscSeparator;
}

void PlanTable::appendSource(std::string& out, const Row& row) const {
  if (row.source != NoLink) {
    out += textOf(row.source);
    return;
  }
  switch (row.type) {
    case RowType::Folder:
      if (!row.itemFlag) appendSourceFolder(out, row.own);
      break;
    case RowType::File:
    case RowType::SplitFile:
      appendSourceFolder(out, row.folder);
      out += textOf(row.original);
      break;
    case RowType::Piece:
      // A piece lies in the folder that stands for its file.
      appendSourceFolder(out, row.folder);
      if (!out.empty()) out.pop_back();
      break;
    case RowType::None:
    case RowType::RepeatedFolder:
      break;
  }
}

void PlanTable::appendRange(std::string& out, const Row& row, int column) const {
  if (row.range == NoLink) return;
  const Range& range = ranges_[row.range];
  appendNumber(out, column == PlanSplit   ? range.number
                    : column == PlanStart ? range.start
                                          : range.end);
}

void PlanTable::appendText(std::string& out, int at, int column) const {
  if (column < 0 || column >= PlanColumns) return;
  if (at == 0) {
    out += Captions[column];
    return;
  }
  const Row& r = row(at);
  switch (column) {
    case PlanMark:
      // Every sub-folder stands above its contents, where the walk reported it below them.
      if (r.type == RowType::Folder && !r.itemFlag) out += '*';
      break;
    case PlanFlag:
      out += r.itemFlag ? '1' : '2';
      break;
    case PlanName:
      appendName(out, r);
      break;
    case PlanOrigin:
      appendOrigin(out, r);
      break;
    case PlanSize:
      appendNumber(out, r.size.whole());
      break;
    case PlanType:
      out += static_cast<char>('0' + static_cast<int>(r.type));
      break;
    case PlanModified:
      if (r.dated) out += Dates::digits(r.modified);
      break;
    case PlanSource:
      appendSource(out, r);
      break;
    case PlanDisc:
      if (r.disc > 0) appendNumber(out, r.disc);
      break;
    case PlanUsed:
      if (r.disc > 0) appendNumber(out, r.discUsed.whole());
      break;
    default:
      appendRange(out, r, column);
      break;
  }
}

std::string PlanTable::text(int at, int column) const {
  std::string out;
  appendText(out, at, column);
  return out;
}

std::string PlanTable::nameOnDisc(int at) const {
  return text(at, PlanName);
}
std::string PlanTable::originName(int at) const {
  return text(at, PlanOrigin);
}
std::string PlanTable::sourcePath(int at) const {
  return text(at, PlanSource);
}

std::string PlanTable::sourceFolder(int at) const {
  const Row& folder = row(at);
  std::string path;
  if (folder.type == RowType::Folder || folder.type == RowType::RepeatedFolder)
    appendSourceFolder(path, folder.own);
  return path;
}

std::string PlanTable::fileOnDisc(int at) const {
  std::string name = nameOnDisc(at);
  if (row(at).type == RowType::Piece) name += "." + Text::zeroPadded(range(at).number, 3);
  return name;
}

std::size_t PlanTable::memoryBytes() const {
  return rows_.capacity() * sizeof(Row) + folders_.capacity() * sizeof(Folder) +
         ranges_.capacity() * sizeof(Range) + arena_.capacity();
}

Fixed4 Plan::doGetDiscSZ(int disc) const {
  const auto at = static_cast<std::size_t>(disc - 1);
  return disc >= 1 && at < DiscUsed.size() ? DiscUsed[at] : Fixed4();
}

void Plan::clearTotals() {
  TotalDiscs = TotalFiles = TotalSplits = 0;
  TotalSize = IndexSizePreliminary = IndexSizeFinal = Fixed4();
  DiscUsed.fill(Fixed4());
}

std::int64_t discCapacity(int comboDiscType) {
  switch (comboDiscType) {
    case 1:
      return 4689297408;
    case 2:
      return 8531214336;
    default:
      return 720183296;
  }
}

}  // namespace korvenal
