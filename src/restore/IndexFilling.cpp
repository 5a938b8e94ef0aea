#include "restore/IndexFilling.h"

#include <algorithm>
#include <array>

#include "core/Workspace.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int Levels = 256;  ///< levels that a folder can stand at
constexpr std::int64_t MaxCount = 999'999'999;

int clamped(std::string_view text, int low, int high) {
  return static_cast<int>(std::clamp<std::int64_t>(Text::toInteger(text), low, high));
}

int discIn(std::string_view text) {
  return clamped(text, 1, RestoreTree::MaxDisc);
}

std::int64_t countIn(std::string_view text) {
  return std::clamp<std::int64_t>(Text::toInteger(text), 0, MaxCount);
}

std::int64_t dateIn(std::string_view text) {
  const bool digits = text.size() == 14 && std::all_of(text.begin(), text.end(),
                                                       [](char c) { return c >= '0' && c <= '9'; });
  return digits ? Text::toInteger(text) : 0;
}

IndexHeader headerOf(const IndexLine& line) {
  IndexHeader header;
  std::string_view job = Text::trim(line[IndexHeadJob]);
  if (const std::size_t mark = job.find("\\*"); mark != std::string_view::npos) {
    header.owner = Text::trim(job.substr(mark + 2));
    job = job.substr(0, mark);
  }
  header.jobName = job;
  header.files = countIn(line[IndexHeadFiles]);
  header.splits = countIn(line[IndexHeadSplits]);
  header.discs = countIn(line[IndexHeadDiscs]);
  header.size = std::max(Fixed4::parse(line[IndexHeadSize]), Fixed4());
  header.created = line[IndexHeadDate];
  return header;
}

class TreeFilling {
 public:
  explicit TreeFilling(RestoreTree& tree) : tree_(tree) {}

  /// False when the line lies deeper than the tree can hold.
  bool add(const IndexLine& line) {
    const int type = clamped(line[IndexType], 0, 5);
    if (type == PieceType) {
      if (partsFollow_) tree_.addPart(discIn(line[IndexDisc]), Fixed4::parse(line[IndexSize]));
      return true;
    }
    partsFollow_ = false;
    if (type < 1 || type > static_cast<int>(RestoreKind::SplitFile)) return true;
    return addItem(line, static_cast<RestoreKind>(type));
  }

  int depth() const { return depth_; }

 private:
  static constexpr int PieceType = 4;

  bool addItem(const IndexLine& line, RestoreKind kind) {
    const std::string_view onDisc = line[IndexName];
    const std::string_view origin = line[IndexOrigin];
    std::string_view path = origin.empty() ? onDisc : origin;
    if (path.ends_with(Paths::DiscSeparator)) path.remove_suffix(1);
    if (path.empty()) return true;
    const auto level =
        static_cast<std::size_t>(std::count(path.begin(), path.end(), Paths::DiscSeparator));
    const bool folder = kind == RestoreKind::Folder;
    if (level > Levels || (folder && level == Levels)) return false;

    RestoreTree::Item item;
    item.kind = kind;
    item.nameOnDisc = tree_.refOf(onDisc);
    if (origin != onDisc) item.originName = tree_.refOf(origin);
    item.date = dateIn(line[IndexDate]);
    item.parent = level > 0 ? levelRow_[level - 1] : 0;
    if (!folder) item.size = sizeIn(line[IndexSize]);
    fillDiscs(item, line);

    const int row = tree_.addRow(item, path.substr(path.rfind(Paths::DiscSeparator) + 1),
                                 static_cast<int>(level));
    partsFollow_ = kind == RestoreKind::SplitFile;
    if (folder) levelRow_[level] = static_cast<std::uint32_t>(row);
    for (std::size_t above = level; above-- > 0;)
      if (levelRow_[above] != 0)
        tree_.widenDiscs(static_cast<int>(levelRow_[above]), item.firstDisc, item.lastDisc);
    depth_ = std::max(depth_, static_cast<int>(level));
    return true;
  }

  /// Absurd sizes are cut, so that no sum of them can run over.
  Fixed4 sizeIn(std::string_view text) {
    const Fixed4 size = std::clamp(Fixed4::parse(text), Fixed4(), bytesLeft_);
    bytesLeft_ -= size;
    return size;
  }

  static void fillDiscs(RestoreTree::Item& item, const IndexLine& line) {
    const int disc = discIn(line[IndexDisc]);
    int first = disc, last = disc;
    if (item.kind == RestoreKind::SplitFile) {
      item.parts = static_cast<std::uint32_t>(clamped(line[IndexSplit], 0, RestoreTree::MaxParts));
      if (!line[IndexStart].empty()) first = discIn(line[IndexStart]);
      last = std::max(first, line[IndexEnd].empty() ? first : discIn(line[IndexEnd]));
    }
    item.disc = static_cast<std::uint16_t>(disc);
    item.firstDisc = static_cast<std::uint16_t>(first);
    item.lastDisc = static_cast<std::uint16_t>(last);
  }

  RestoreTree& tree_;
  std::array<std::uint32_t, Levels> levelRow_{};  ///< the last folder of each level; 0: none yet
  bool partsFollow_ = false;                      ///< the lines since the last row are its parts
  int depth_ = 0;
  Fixed4 bytesLeft_ = Fixed4::MaxWhole;  ///< what the files of an index can still have in all
};

}  // namespace

IndexFilling fillRestoreTree(IndexText& index, RestoreTree& tree, const FillingProgress& progress) {
  const int lines = index.rows() - 1;
  tree.clear(index.take());
  IndexFilling result;
  if (lines < 1) return result;
  tree.reserve(static_cast<std::size_t>(lines) + 1);

  IndexCursor cursor(tree.arena());
  IndexLine line;
  cursor.next(line);
  result.header = headerOf(line);
  TreeFilling filling(tree);
  for (int number = 1; !result.tooDeep && cursor.next(line); ++number) {
    if (number == 1 && line[IndexName] == KitFileName) {
      result.holdsKit = true;
      continue;
    }
    progress(number, lines);
    result.tooDeep = !filling.add(line);
  }
  tree.finishRows();
  result.outlineDepth = filling.depth();
  return result;
}

}  // namespace korvenal
