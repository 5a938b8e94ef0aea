#include "restore/IndexReading.h"

#include <algorithm>

#include "plan/BackupIndex.h"
#include "restore/IndexText.h"
#include "restore/RestoreTree.h"

namespace korvenal {

namespace {

/// A file that goes away with its scope.
class TemporaryFile {
 public:
  TemporaryFile(Files& files, std::string path) : files_(files), path_(std::move(path)) {}
  ~TemporaryFile() { files_.doDeleteFile(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  const std::string& path() const { return path_; }

 private:
  Files& files_;
  std::string path_;
};

}  // namespace

std::optional<IndexReading::Content> IndexReading::doRead(const std::string& path) const {
  const bool packed = archive_.isArchive(path);
  std::string name = packed ? archive_.entryName(path) : path;
  std::optional<std::string> text = packed ? doExtract(path) : doReadText(path);
  if (!text) return std::nullopt;
  return Content{std::move(name), std::move(*text)};
}

std::optional<std::string> IndexReading::doExtract(const std::string& path) const {
  const std::int64_t limit = mostIndexBytesIn(files_.doGetFileSize(path).whole());
  const TemporaryFile extracted(files_, workspace_.TempFolder + IndexScratchName);
  const auto pump = [this] { desktop_.doYield(); };
  if (archive_.extract(path, extracted.path(), IndexPassword, limit, pump) != 0)
    return std::nullopt;
  return doReadText(extracted.path());
}

std::optional<std::string> IndexReading::doReadText(const std::string& path) const {
  constexpr std::int64_t PieceBytes = 4 * FileView::PieceBytes;
  const std::int64_t size = files_.doGetFileSize(path).whole();
  if (size > RestoreTree::MaxTextBytes) return std::nullopt;
  std::string text;
  while (static_cast<std::int64_t>(text.size()) < size) {
    const auto part = files_.readPart(path, static_cast<std::int64_t>(text.size()), PieceBytes);
    if (!part || part->empty()) return std::nullopt;
    // What begins as no index is not read on, however large it is.
    if (text.empty() && !part->starts_with(IndexText::Stamp)) return std::nullopt;
    if (text.empty()) text.reserve(static_cast<std::size_t>(size));
    text += *part;
    desktop_.doYield();
  }
  return text;
}

}  // namespace korvenal
