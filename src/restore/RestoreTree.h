#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plan/PlanLimits.h"
#include "platform/Fixed4.h"

namespace korvenal {

/// The kinds of rows of `vsRestore`, by the digit in the kind column.
enum class RestoreKind : std::uint8_t {
  None = 0,
  Folder = 1,
  File = 2,
  SplitFile = 3,  ///< a folder on disc named like the file, holding its numbered parts
};

/// The check state of a row.
enum class RestoreCheck : std::uint8_t {
  Checked = 1,
  Unchecked = 2,
  StillChecked = 3,    ///< result of a click on a partly checked row; becomes Checked
  StillUnchecked = 4,  ///< the same; becomes Unchecked
  Partly = 5,          ///< some but not all items of a folder
};

/// Columns of `vsRestore` as text; 0 to 4 are visible.
enum RestoreColumn : int {
  RestoreName = 0,
  RestoreDisc = 1,
  RestoreSize = 2,
  RestoreType = 3,
  RestoreModified = 4,
  RestoreKindColumn = 5,
  RestoreParent = 6,
  RestoreSelf = 7,
  RestoreItemDisc = 8,
  RestoreFirstDisc = 9,
  RestoreLastDisc = 10,
  RestoreColumns = 11,
};

/// `vsRestore`: the tree of everything in a backup index, in index order. Row 0 is the header. A
/// million rows are common, so a row holds numbers and places in the text of the index, which the
/// tree keeps as the one copy of all names; columns are put together on demand.
class RestoreTree {
 public:
  static constexpr int MaxDisc = 999;      ///< disc numbers are kept within 1 and this
  static constexpr int MaxParts = 999999;  ///< the number of parts of a file is cut to this
  static constexpr std::int64_t MaxTextBytes = MaxIndexBytes;  ///< longest text of an index

  /// A piece of the text of the index.
  struct TextRef {
    std::uint32_t at = 0;
    std::uint32_t length = 0;
  };

  struct Item {
    Fixed4 size;                   ///< bytes; 0 for folders; the whole file for a split file
    std::int64_t date = 0;         ///< "yyyymmddhhmmss" as a number; 0 for none
    TextRef nameOnDisc;            ///< path on disc; folders and split files end in '\'
    TextRef originName;            ///< path from before a shortening; empty when it is the same
    std::uint32_t parent = 0;      ///< row of the parent folder; 0 for a top-level row
    std::uint32_t end = 0;         ///< the first row behind this one that lies no deeper
    std::uint32_t parts = 0;       ///< split files: number of parts
    std::uint32_t firstPart = 0;   ///< split files: place of the first part
    std::uint32_t knownParts = 0;  ///< split files: parts whose disc the index tells
    std::uint16_t disc = 0;        ///< disc of the item, of a split file's own row
    std::uint16_t firstDisc = 0;   ///< for folders the range of their contents
    std::uint16_t lastDisc = 0;
    RestoreKind kind = RestoreKind::None;
  };

  /// Gives the type text of a name; asked only when a type is looked at.
  using TypeNames = std::function<std::string(const std::string& name, bool isFolder)>;

  explicit RestoreTree(TypeNames typeNames);

  int Rows() const { return static_cast<int>(rows_.size()); }
  bool hasData() const { return Rows() > 1; }
  /// The row that the person is on; 0 for none.
  int Row = 0;
  /// Grows with every change; a front end compares it to know whether to repaint.
  std::uint64_t revision() const { return revision_; }

  const Item& item(int at) const { return rows_[index(at)]; }
  int level(int at) const { return levels_[index(at)]; }
  bool isFolder(int at) const { return item(at).kind == RestoreKind::Folder; }
  /// What is shown: the last component, of the origin name when there is one.
  std::string_view name(int at) const {
    const std::uint32_t start = nameAt_[index(at)];
    return std::string_view(names_).substr(start, nameAt_[index(at) + 1] - start - 1);
  }
  /// The names of this row and of all behind it, for fast searches: each is followed by NameEnd,
  /// which no name holds.
  std::string_view namesFrom(int at) const {
    return std::string_view(names_).substr(nameAt_[index(at)]);
  }
  static constexpr char NameEnd = '\n';
  std::string_view nameOnDisc(int at) const { return view(item(at).nameOnDisc); }
  /// The path that the item had before any shortening, as far as it differs.
  std::string_view originName(int at) const { return view(item(at).originName); }
  /// The path to restore to: the origin name, or the name on disc when there is no other.
  std::string_view doGetOriginPath(int at) const;

  /// Any column as its text. Row 0 gives the headers of the visible columns.
  std::string text(int at, int column) const;
  /// The value behind a column's text; empty for columns that have none.
  std::string cellData(int at, int column) const;

  /// Parts of a split file, numbered from 1. The disc of a part that the index does not tell is 0.
  int partDisc(int at, int part) const;
  /// Bytes of a part; nothing for one that the index does not tell.
  std::optional<Fixed4> partSize(int at, int part) const;
  /// Path of a part on disc: the parts lie in the file's folder and bear "." and three digits.
  std::string partOnDisc(int at, int part) const;
  /// The common beginning of the part paths: folder and name without the suffix.
  std::string partBaseName(int at) const;

  RestoreCheck check(int at) const { return static_cast<RestoreCheck>(checks_[index(at)]); }
  void setCheck(int at, RestoreCheck check);
  bool isCollapsed(int at) const { return collapsed_[index(at)] != 0; }
  void setCollapsed(int at, bool collapsed);
  void setAllCollapsed(bool collapsed);

  /// Bytes of memory that the tree holds.
  std::size_t memoryBytes() const;

  // Building.

  /// Empties the tree and takes the text that its names lie in, of at most MaxTextBytes.
  void clear(std::string text = {});
  const std::string& arena() const { return text_; }
  /// The place of a view of the arena.
  TextRef refOf(std::string_view view) const;
  void reserve(std::size_t rows);
  /// Adds a row at the end, unchecked, with the name that is shown, and returns its number.
  int addRow(const Item& item, std::string_view name, int level);
  /// Fills `end` of all rows; called once behind the last row.
  void finishRows();
  /// Widens the disc range of a row so that it holds both discs.
  void widenDiscs(int at, int firstDisc, int lastDisc);
  /// Tells the disc and the bytes of the next part of the row added last. More parts than the row
  /// has are ignored.
  void addPart(int disc, Fixed4 size);

 private:
  static std::size_t index(int at) { return static_cast<std::size_t>(at); }
  std::string_view view(TextRef ref) const {
    return std::string_view(text_).substr(ref.at, ref.length);
  }
  const std::string& typeText(int at) const;

  TypeNames typeNames_;
  std::string text_;
  std::string names_;                  ///< names shown, each with NameEnd behind it
  std::vector<std::uint32_t> nameAt_;  ///< where each begins; one more for the end
  std::vector<Item> rows_;
  std::vector<std::uint16_t> levels_;
  std::vector<std::uint8_t> checks_;
  std::vector<std::uint8_t> collapsed_;
  std::vector<std::uint16_t> partDiscs_;
  std::vector<Fixed4> partSizes_;
  std::uint64_t revision_ = 0;
  mutable std::unordered_map<std::string, std::string> typeTexts_;  ///< by extension
};

}  // namespace korvenal
