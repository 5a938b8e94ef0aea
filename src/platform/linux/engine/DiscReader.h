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
#include "platform/linux/engine/IsoVolume.h"
#include "platform/linux/engine/ReleaseThread.h"
#include "platform/linux/engine/SlowCalls.h"

namespace korvenal {

/// What keeps the program alive while a reader works on very large folders. Both outlive it.
struct ReaderAid {
  SlowCalls* calls = nullptr;        ///< reads them
  ReleaseThread* release = nullptr;  ///< lets go of what was kept of a disc that is gone
};

/// Reads the files of one session of an ISO 9660 disc without mounting it: with the names of Rock
/// Ridge, else of Joliet, else the plain ones. Folders are read when they are first asked for and
/// kept while there is room. Whatever a malformed disc holds ends in folders that are missing as a
/// whole and failing reads. To be used on one thread. What is asked while a call is at work, by
/// what that lets in, finds nothing.
class DiscReader {
 public:
  /// `start` is the first block of the session. Null when no tree is there, or the libraries are
  /// not up; they must outlive every use of the reader.
  static std::shared_ptr<DiscReader> open(const DiscLibraries& libraries,
                                          std::unique_ptr<BlockReader> disc, std::uint32_t start,
                                          ReaderAid aid = {});
  ~DiscReader();
  DiscReader(const DiscReader&) = delete;
  DiscReader& operator=(const DiscReader&) = delete;

  const std::string& label() const { return label_; }

  /// Paths as in DiscFiles.
  FileInfo info(std::string_view discPath);
  std::vector<std::string> list(std::string_view discPath);
  std::unique_ptr<FileStream> openFile(std::string_view discPath);

  /// The disc has left the drive: nothing is found and all open streams fail from here on, or from
  /// the end of the call that is at work.
  void detach();

 private:
  struct Folder;
  using FolderPtr = std::shared_ptr<const Folder>;

  DiscReader(std::shared_ptr<IsoVolume> volume, ReaderAid aid)
      : volume_(std::move(volume)), aid_(aid) {}
  bool isAway() const;
  FolderPtr folderAt(std::string_view path);
  FolderPtr findFolder(std::string_view path);
  FolderPtr readFolder(iso_file_source* source) const;
  FolderPtr fetch(std::string_view path, const FolderPtr& above);
  iso_file_source* sourceOf(std::string_view path, const FolderPtr& above) const;
  bool isLong(iso_file_source* source, std::string_view path) const;
  std::deque<std::string>::const_iterator oldestBeside(std::string_view path) const;
  FolderPtr freshFolderAt(std::string_view path);
  void keep(std::string_view path, const FolderPtr& folder);

  std::shared_ptr<IsoVolume> volume_;  ///< null once detached
  ReaderAid aid_;
  std::string label_;
  std::map<std::string, FolderPtr, std::less<>> folders_;
  std::deque<std::string> order_;  ///< keys of folders_, the oldest first
  std::size_t entriesKept_ = 0;
  std::string lastPath_;
  FolderPtr last_;
  bool atWork_ = false;
  bool detachWanted_ = false;
};

}  // namespace korvenal
