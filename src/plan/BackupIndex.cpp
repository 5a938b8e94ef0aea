#include "plan/BackupIndex.h"

#include <algorithm>

#include "plan/DateDigits.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t BufferBytes = 1048576;
constexpr const char* LineEnd = "\r\n";

bool isIndexed(const PlanTable::Row& row) {
  return row.type <= RowType::Piece && !row.lost;
}

/// What the lines of an index are of.
struct LineCounts {
  std::int64_t lines = 0;
  std::int64_t pieces = 0;
  std::int64_t lostFiles = 0;  ///< files that have none, though the plan counts them
};

LineCounts countLines(const PlanTable& table) {
  LineCounts counts;
  for (int at = 2; at < table.Rows(); ++at) {
    const PlanTable::Row& row = table.row(at);
    counts.lines += isIndexed(row) ? 1 : 0;
    counts.pieces += isIndexed(row) && row.type == RowType::Piece ? 1 : 0;
    const bool file = row.type == RowType::File || row.type == RowType::SplitFile;
    counts.lostFiles += file && row.lost ? 1 : 0;
  }
  return counts;
}

/// A field can hold no tab and no line break.
std::string asField(std::string_view text) {
  std::string field(Text::trim(text));
  std::replace_if(
      field.begin(), field.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return field;
}

std::string headerLine(const Plan& plan, const BackupIndex::Header& header) {
  const LineCounts counts = countLines(plan.vsBuffer);
  const std::string user = header.userName.empty() ? "" : "\\*" + asField(header.userName);
  const std::string fields[IndexFields] = {IndexStamp,
                                           asField(header.jobName) + user,
                                           std::to_string(plan.TotalFiles - counts.lostFiles),
                                           plan.TotalSize.toText(),
                                           "0",
                                           Dates::digits(plan.RunDate),
                                           std::to_string(plan.TotalSplits),
                                           std::to_string(counts.pieces),
                                           std::to_string(counts.lines),
                                           std::to_string(plan.TotalDiscs)};
  std::string line;
  for (const std::string& field : fields) line.append(line.empty() ? "" : "\t").append(field);
  return line + LineEnd;
}

/// Makes the lines of rows. Neighbours mostly share a folder, whose path is kept.
class IndexLines {
 public:
  explicit IndexLines(const PlanTable& table) : table_(table) {}

  void append(std::string& out, int at) {
    const PlanTable::Row& row = table_.row(at);
    enter(row.folder);
    for (const int column : IndexedPlanColumns) {
      if (column != PlanFlag) out += '\t';
      appendField(out, at, row, column);
    }
    out += LineEnd;
  }

 private:
  void enter(PlanTable::Link folder) {
    if (folder == folder_) return;
    folder_ = folder;
    path_.clear();
    table_.appendFolderPath(path_, folder, false);
  }

  void appendField(std::string& out, int at, const PlanTable::Row& row, int column) {
    if (column == PlanName) {
      out += path_;
      out += table_.textOf(row.name);
      if (row.type == RowType::Folder || row.type == RowType::SplitFile)
        out += Paths::DiscSeparator;
    } else if (column == PlanModified) {
      if (row.dated) dates_.append(out, row.modified);
    } else {
      table_.appendText(out, at, column);
    }
  }

  const PlanTable& table_;
  PlanTable::Link folder_ = PlanTable::NoLink;
  std::string path_;
  DateDigits dates_;
};

}  // namespace

Fixed4 BackupIndex::doWriteBackupIndex(const Plan& plan, const Header* header) {
  if (plan.vsBuffer.Rows() + (header != nullptr ? 1 : 0) < 3) return {};
  files_.doDeleteFile(plan.IndexTempPath);
  if (!writeText(plan, header)) {
    // A shorter file would pass for a whole index.
    files_.doDeleteFile(plan.IndexTempPath);
    return {};
  }
  files_.doDeleteFile(plan.IndexZipPath);
  const int result = archive_.compress(plan.IndexZipPath, plan.IndexTempPath, IndexPassword,
                                       [this] { desktop_.doYield(); });
  desktop_.doYield();
  if (result == 0 && isReadable(plan)) files_.doRename(plan.IndexZipPath, plan.IndexTempPath);
  return files_.doGetFileSize(plan.IndexTempPath);
}

/// What packs too well would be taken for a bomb when it is opened: it stays as it is.
bool BackupIndex::isReadable(const Plan& plan) const {
  const Fixed4 packed = files_.doGetFileSize(plan.IndexZipPath);
  return packed > Fixed4(0) &&
         files_.doGetFileSize(plan.IndexTempPath) <= Fixed4(mostIndexBytesIn(packed.whole()));
}

bool BackupIndex::writeText(const Plan& plan, const Header* header) {
  const auto file = files_.doCreateFile(plan.IndexTempPath);
  if (!file) return false;
  std::string buffer;
  buffer.reserve(BufferBytes + BufferBytes / 4);
  if (header != nullptr) buffer = headerLine(plan, *header);
  IndexLines lines(plan.vsBuffer);
  int left = mostLines - 1;  // the header line counts, whether it is there yet or not
  std::int64_t written = 0;
  for (int row = 2; row < plan.vsBuffer.Rows(); ++row) {
    desktop_.doYield();
    if (state_.StopAction) return false;
    if (!isIndexed(plan.vsBuffer.row(row))) continue;
    if (--left < 0) return false;
    lines.append(buffer, row);
    if (buffer.size() < BufferBytes) continue;
    written += std::ssize(buffer);
    if (written > mostBytes || !file->write(buffer)) return false;
    buffer.clear();
  }
  return written + std::ssize(buffer) <= mostBytes && file->write(buffer) && file->finish();
}

}  // namespace korvenal
