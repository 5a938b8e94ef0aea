#include "restore/RestoreTree.h"

#include <algorithm>
#include <iterator>

#include "core/DateText.h"
#include "core/SizeText.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr const char* Headers[] = {"Name", "Disc#", "Size", "Type", "Modified"};
constexpr std::size_t TypeTextsKept = 4096;  ///< extensions are the index's, so they are bounded

std::string_view withoutSeparator(std::string_view path) {
  if (path.ends_with(Paths::DiscSeparator)) path.remove_suffix(1);
  return path;
}

std::string_view lastComponent(std::string_view path) {
  path = withoutSeparator(path);
  return path.substr(path.rfind(Paths::DiscSeparator) + 1);
}

std::string digitsOf(std::int64_t date) {
  return date == 0 ? "" : Text::zeroPadded(date, 14);
}

}  // namespace

RestoreTree::RestoreTree(TypeNames typeNames) : typeNames_(std::move(typeNames)) {
  clear();
}

void RestoreTree::clear(std::string text) {
  text_ = std::move(text);
  names_ = NameEnd;
  nameAt_ = {0, 1};
  rows_ = std::vector<Item>(1);
  levels_ = {0};
  checks_ = {static_cast<std::uint8_t>(RestoreCheck::Unchecked)};
  collapsed_ = {0};
  partDiscs_ = {};
  partSizes_ = {};
  Row = 0;
  ++revision_;
}

RestoreTree::TextRef RestoreTree::refOf(std::string_view part) const {
  if (part.empty()) return {};
  return {static_cast<std::uint32_t>(part.data() - text_.data()),
          static_cast<std::uint32_t>(part.size())};
}

void RestoreTree::reserve(std::size_t rows) {
  rows_.reserve(rows);
  nameAt_.reserve(rows + 1);
  levels_.reserve(rows);
  checks_.reserve(rows);
  collapsed_.reserve(rows);
}

int RestoreTree::addRow(const Item& item, std::string_view name, int level) {
  const int at = Rows();
  rows_.push_back(item);
  rows_.back().end = static_cast<std::uint32_t>(at) + 1;
  names_ += name;
  names_ += NameEnd;
  nameAt_.push_back(static_cast<std::uint32_t>(names_.size()));
  levels_.push_back(static_cast<std::uint16_t>(level));
  checks_.push_back(static_cast<std::uint8_t>(RestoreCheck::Unchecked));
  collapsed_.push_back(0);
  ++revision_;
  return at;
}

void RestoreTree::finishRows() {
  // From the bottom up, a row ends where the last row directly below it ends.
  for (int at = Rows() - 1; at > 0; --at) {
    auto end = static_cast<std::uint32_t>(at) + 1;
    while (end < rows_.size() && levels_[end] > levels_[index(at)]) end = rows_[end].end;
    rows_[index(at)].end = end;
  }
}

void RestoreTree::addPart(int disc, Fixed4 size) {
  Item& item = rows_.back();
  if (item.kind != RestoreKind::SplitFile || item.knownParts >= item.parts) return;
  if (item.knownParts == 0) item.firstPart = static_cast<std::uint32_t>(partDiscs_.size());
  partDiscs_.push_back(static_cast<std::uint16_t>(disc));
  partSizes_.push_back(size);
  ++item.knownParts;
}

void RestoreTree::widenDiscs(int at, int firstDisc, int lastDisc) {
  Item& item = rows_[index(at)];
  item.firstDisc = std::min(item.firstDisc, static_cast<std::uint16_t>(firstDisc));
  item.lastDisc = std::max(item.lastDisc, static_cast<std::uint16_t>(lastDisc));
}

std::string_view RestoreTree::doGetOriginPath(int at) const {
  const std::string_view origin = originName(at);
  return origin.empty() ? nameOnDisc(at) : origin;
}

std::string RestoreTree::text(int at, int column) const {
  if (column < 0 || column >= RestoreColumns || at < 0 || at >= Rows()) return {};
  if (at == 0) return column < static_cast<int>(std::size(Headers)) ? Headers[column] : "";
  const Item& row = item(at);
  switch (column) {
    case RestoreName:
      return std::string(name(at));
    case RestoreDisc:
      return row.firstDisc == row.lastDisc
                 ? std::to_string(row.firstDisc)
                 : std::to_string(row.firstDisc) + "-" + std::to_string(row.lastDisc);
    case RestoreSize:
      return isFolder(at) ? "" : formatSizeText(row.size, true);
    case RestoreType:
      return typeText(at);
    case RestoreModified:
      return doGetFileDateString(digitsOf(row.date));
    case RestoreKindColumn:
      return std::to_string(static_cast<int>(row.kind));
    case RestoreParent:
      return std::to_string(row.parent);
    case RestoreSelf:
      return isFolder(at) ? std::to_string(at) : "";
    case RestoreItemDisc:
      return std::to_string(row.disc);
    case RestoreFirstDisc:
      return std::to_string(row.firstDisc);
    default:
      return std::to_string(row.lastDisc);
  }
}

std::string RestoreTree::cellData(int at, int column) const {
  if (at <= 0 || at >= Rows()) return {};
  const Item& row = item(at);
  const bool split = row.kind == RestoreKind::SplitFile;
  switch (column) {
    case RestoreName:
      return std::string(nameOnDisc(at));
    case RestoreDisc:
      return std::string(originName(at));
    case RestoreSize:
      return row.size.toText();
    case RestoreModified:
      return digitsOf(row.date);
    case RestoreKindColumn:
      return split ? std::to_string(row.parts) : "";
    case RestoreItemDisc: {
      std::string discs;
      for (std::uint32_t part = 1; split && part <= row.knownParts; ++part)
        discs += Text::zeroPadded(partDisc(at, static_cast<int>(part)), 3);
      return discs;
    }
    default:
      return {};
  }
}

int RestoreTree::partDisc(int at, int part) const {
  const Item& row = item(at);
  if (part < 1 || static_cast<std::uint32_t>(part) > row.knownParts) return 0;
  return partDiscs_[row.firstPart + static_cast<std::size_t>(part) - 1];
}

std::optional<Fixed4> RestoreTree::partSize(int at, int part) const {
  if (partDisc(at, part) == 0) return std::nullopt;
  return partSizes_[item(at).firstPart + static_cast<std::size_t>(part) - 1];
}

std::string RestoreTree::partBaseName(int at) const {
  // The name on disc, not the one shown: a long name is shortened for folder and parts alike.
  const std::string_view folder = withoutSeparator(nameOnDisc(at));
  std::string base(folder);
  return base.append(1, Paths::DiscSeparator).append(lastComponent(folder));
}

std::string RestoreTree::partOnDisc(int at, int part) const {
  return partBaseName(at) + "." + Text::zeroPadded(part, 3);
}

void RestoreTree::setCheck(int at, RestoreCheck check) {
  checks_[index(at)] = static_cast<std::uint8_t>(check);
  ++revision_;
}

void RestoreTree::setCollapsed(int at, bool collapsed) {
  collapsed_[index(at)] = collapsed ? 1 : 0;
  ++revision_;
}

void RestoreTree::setAllCollapsed(bool collapsed) {
  for (std::size_t at = 1; at < rows_.size(); ++at)
    collapsed_[at] = collapsed && rows_[at].end > at + 1 ? 1 : 0;
  ++revision_;
}

const std::string& RestoreTree::typeText(int at) const {
  // A key that no extension can be stands for folders.
  const std::string_view shown = name(at);
  const std::size_t dot = shown.rfind('.');
  const std::string extension(dot == std::string_view::npos ? "" : shown.substr(dot));
  const std::string key = isFolder(at) ? "\\" : extension;
  if (const auto known = typeTexts_.find(key); known != typeTexts_.end()) return known->second;

  std::string text =
      typeNames_(isFolder(at) ? std::string(shown) : "file" + extension, isFolder(at));
  if (text.empty() && isFolder(at)) text = "Folder";
  if (text.empty())
    text = extension.size() > 1 ? Text::toUpper(extension.substr(1)) + " File" : "File";
  if (typeTexts_.size() >= TypeTextsKept) typeTexts_.clear();
  return typeTexts_.emplace(key, std::move(text)).first->second;
}

std::size_t RestoreTree::memoryBytes() const {
  return text_.capacity() + names_.capacity() + nameAt_.capacity() * sizeof(std::uint32_t) +
         rows_.capacity() * sizeof(Item) + levels_.capacity() * sizeof(std::uint16_t) +
         checks_.capacity() + collapsed_.capacity() +
         partDiscs_.capacity() * sizeof(std::uint16_t) + partSizes_.capacity() * sizeof(Fixed4);
}

}  // namespace korvenal
