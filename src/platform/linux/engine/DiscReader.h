#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/DiscFiles.h"
#include "platform/linux/engine/BlockReader.h"
#include "platform/linux/engine/DiscLibraries.h"

namespace korvenal {

/// Reads the files of one session of an ISO 9660 disc without mounting it: with the names of Rock
/// Ridge, else of Joliet, else the plain ones. Folders are read when they are first asked for and
/// kept while there is room. Whatever a malformed disc holds ends in missing entries and failing
/// reads. To be used on one thread.
class DiscReader {
 public:
  /// `start` is the first block of the session. Null when no tree is there, or the libraries are
  /// not up; they must outlive every use of the reader.
  static std::shared_ptr<DiscReader> open(const DiscLibraries& libraries,
                                          std::unique_ptr<BlockReader> disc, std::uint32_t start);
  ~DiscReader();
  DiscReader(const DiscReader&) = delete;
  DiscReader& operator=(const DiscReader&) = delete;

  const std::string& label() const { return label_; }

  /// Paths as in DiscFiles.
  FileInfo info(std::string_view discPath);
  std::vector<std::string> list(std::string_view discPath);
  std::unique_ptr<FileStream> openFile(std::string_view discPath);

  /// The disc has left the drive: nothing is found and all open streams fail from here on.
  void detach();

 private:
  struct Folder;
  struct Volume;
  using FolderPtr = std::shared_ptr<const Folder>;

  explicit DiscReader(std::shared_ptr<Volume> volume) : volume_(std::move(volume)) {}
  FolderPtr folderAt(std::string_view path);
  FolderPtr freshFolderAt(std::string_view path);
  FolderPtr keep(std::string_view path, FolderPtr folder);

  std::shared_ptr<Volume> volume_;
  std::string label_;
  std::map<std::string, FolderPtr, std::less<>> folders_;
  std::deque<std::string> order_;  ///< keys of folders_, the oldest first
  std::size_t entriesKept_ = 0;
  std::string lastPath_;
  FolderPtr last_;
};

}  // namespace korvenal
