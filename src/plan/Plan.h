#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/Fixed4.h"
#include "platform/SetIdentity.h"

namespace korvenal {

/// The kinds of plan rows, by the digit in the Type column.
enum class RowType : std::uint8_t {
  None = 0,
  Folder = 1,
  File = 2,
  SplitFile = 3,       ///< a split file's own row: a folder on disc named like the file
  Piece = 4,           ///< a byte range of a split file
  RepeatedFolder = 5,  ///< a folder made again at the head of a later disc
};

/// Rows of these kinds are folders on the disc.
constexpr bool isFolderOnDisc(RowType type) {
  return type == RowType::Folder || type == RowType::SplitFile || type == RowType::RepeatedFolder;
}

/// Columns of `vsBuffer` as text.
enum PlanColumn : int {
  PlanMark = 0,
  PlanFlag = 1,
  PlanName = 2,
  PlanOrigin = 3,
  PlanSize = 4,
  PlanType = 5,
  PlanModified = 6,
  PlanSource = 7,
  PlanSplit = 8,
  PlanStart = 9,
  PlanEnd = 10,
  PlanDisc = 11,
  PlanUsed = 12,
  PlanColumns = 13,
};

/// The columns that go into the index, in the order of its fields.
inline constexpr int IndexedPlanColumns[] = {PlanFlag, PlanName,     PlanOrigin, PlanSize,
                                             PlanType, PlanModified, PlanSplit,  PlanStart,
                                             PlanEnd,  PlanDisc};

/// The plan: one row for every folder, file, split file and piece in burn order. A million rows
/// are common, so a row holds numbers and links: names are kept once, as components in one arena,
/// and a path is put together on demand from the folders above. Row 0 is the header.
class PlanTable {
 public:
  using Link = std::uint32_t;
  static constexpr Link NoLink = 0;

  /// A folder that rows lie in: its name on disc and where it came from. Link 1 is the disc root.
  struct Folder {
    Link parent = NoLink;
    Link name = NoLink;  ///< component on disc; NoLink for the root and for a dropped top folder
    Link original = NoLink;  ///< component before shortening; equal to `name` when not shortened
    Link source = NoLink;    ///< native path when this is a job item; else below the parent's
    bool renamed = false;    ///< this folder or one above was shortened; kept by the table
  };

  struct Row {
    Fixed4 size;      ///< bytes; 0 for folders; the whole file for a split file's own row
    Fixed4 discUsed;  ///< bytes planned on the disc up to and including this row
    UnixTime modified = 0;
    Link folder = NoLink;    ///< the folder that the row lies in
    Link name = NoLink;      ///< component on disc; for folder rows that of `own`
    Link original = NoLink;  ///< component before shortening; equal to `name` when not shortened
    Link own = NoLink;       ///< folder rows and split files: the folder that the row stands for
    Link source = NoLink;    ///< native path when it is not that below the folder's source
    Link range = NoLink;     ///< pieces and split files: their numbers, see `Range`
    RowType type = RowType::None;
    bool itemFlag = false;  ///< Flag "1"; else "2"
    bool dated = false;     ///< `modified` holds a date
    /// Not saved, and nothing of it will be: an index that is written from now on has no line of
    /// it. A split file's pieces are marked with its own row.
    bool lost = false;
    std::uint8_t disc = 0;  ///< 1 to 100; 0: none yet
  };

  /// Piece: number, first and last byte (1-based). Split file, once counted: number of pieces,
  /// disc of its own row, disc of its last piece.
  struct Range {
    std::int32_t number = 0;
    std::int64_t start = 0;
    std::int64_t end = 0;
  };

  PlanTable();

  int Rows() const { return static_cast<int>(rows_.size()); }
  bool hasData() const { return Rows() > 1; }
  /// Cuts the table to its header row and frees what the rows held.
  void clear();

  const Row& row(int at) const { return rows_[static_cast<std::size_t>(at)]; }
  Row& row(int at) { return rows_[static_cast<std::size_t>(at)]; }

  /// Path on disc: '\' between components, folders and split files end in '\'.
  std::string nameOnDisc(int at) const;
  /// The path on disc from before the shortening of any component; empty when none was shortened.
  std::string originName(int at) const;
  /// Native path of the source; walked folders end in '/'; empty for item folders and type 5.
  std::string sourcePath(int at) const;
  /// Native path of the folder that a folder row stands for, on whichever disc, '/' at its end;
  /// empty for the folder of a split file's pieces, and for what is no folder.
  std::string sourceFolder(int at) const;
  /// Path of the file on the disc as it is burned: pieces bear "." and three digits.
  std::string fileOnDisc(int at) const;
  /// Any column as its text.
  std::string text(int at, int column) const;
  /// Appends the text of a column, without a temporary text.
  void appendText(std::string& out, int at, int column) const;
  const Range& range(int at) const { return ranges_[rows_[static_cast<std::size_t>(at)].range]; }

  // Building, for the subjects of this folder. Links stay valid until `clear`; views of texts only
  // until the next `addText`.
  std::vector<Row>& rows() { return rows_; }
  const std::vector<Row>& rows() const { return rows_; }
  /// `text` is no view of a text of this table. Texts are cut at 65535 bytes.
  Link addText(std::string_view text);
  std::string_view textOf(Link link) const;
  Link addFolder(const Folder& folder);
  Folder& folder(Link link) { return folders_[link]; }
  const Folder& folder(Link link) const { return folders_[link]; }
  /// Brings `renamed` of all folders up to date after components were shortened.
  void settleRenames();
  /// Appends the path of a folder on disc, '\' at its end; nothing for the root.
  void appendFolderPath(std::string& out, Link folder, bool original) const;
  /// Takes out the rows of type None, but for the header.
  void dropEmptyRows();
  Link addRange(const Range& range);
  Range& rangeOf(Link link) { return ranges_[link]; }
  static constexpr Link DiscRoot = 1;

  /// Bytes of memory that the table holds.
  std::size_t memoryBytes() const;

 private:
  void appendName(std::string& out, const Row& row) const;
  void appendOrigin(std::string& out, const Row& row) const;
  void appendSource(std::string& out, const Row& row) const;
  void appendSourceFolder(std::string& out, Link folder) const;
  void appendRange(std::string& out, const Row& row, int column) const;

  std::vector<Row> rows_;
  std::vector<Folder> folders_;
  std::vector<Range> ranges_;
  std::vector<char> arena_;  ///< texts: two bytes of length, then the bytes
};

/// The plan and its results, shared by the scan, the run and the estimate.
struct Plan {
  PlanTable vsBuffer;

  std::int32_t TotalDiscs = 0;
  std::int32_t TotalFiles = 0;
  std::int32_t TotalSplits = 0;
  Fixed4 TotalSize;                    ///< bytes of all files, each counted once
  std::array<Fixed4, 100> DiscUsed{};  ///< planned bytes of disc n at n - 1
  Fixed4 IndexSizePreliminary;         ///< bytes of the index when disc 1 was filled
  Fixed4 IndexSizeFinal;               ///< bytes of the index that is burned

  int ScanMode = 0;           ///< 0 backup run, 1 estimate
  bool IndexOnDiscs = false;  ///< the discs carry an index, whose row is row 1
  /// Rows have changed since the index was written. Whoever changes a size, a date or a `lost` of a
  /// row sets it; the index is then written anew before it goes on the next disc.
  bool IndexOutdated = false;
  bool IsDifferential = false;
  UnixTime RunDate = 0;                   ///< the moment the scan began
  std::string RunStamp;                   ///< "yyyy-mm-dd-hh-nn-F" or "-D"
  std::string IndexDiscName;              ///< name of the index on the discs
  SetIdentity identity;                   ///< of the set; a run that goes on keeps it
  std::string FaultListName;              ///< name of each disc's list of files not saved
  std::string IndexTempPath;              ///< the finished index
  std::string IndexZipPath;               ///< the archive while it is made
  std::vector<std::string> skippedNotes;  ///< lines about what the walk had to pass over
  int missed = 0;  ///< how much of what the job names is therefore not in the plan

  /// Planned bytes of disc 1 to 100; 0 for any other number.
  Fixed4 doGetDiscSZ(int disc) const;
  /// Zeroes the totals, as before a scan.
  void clearTotals();
};

/// Usable bytes of one disc, by the list index of the disc type.
std::int64_t discCapacity(int comboDiscType);

}  // namespace korvenal
