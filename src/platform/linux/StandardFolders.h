#pragma once

#include <string>

namespace korvenal {

/// The folders of this machine and user that the program starts from. All end in '/'.
struct StandardFolders {
  std::string application;  ///< settings, records, logs; not made yet
  std::string bin;          ///< "BIN": chime, pictures, restore kit; may not exist
  std::string home;
  std::string temporary;  ///< for scratch files; not made yet
};

/// Where the program's own folders are looked for.
struct FolderSearch {
  std::string executableFolder;   ///< folder of the running program
  std::string wantedApplication;  ///< named by the user; empty for the usual one
};

/// The application folder is the one named by the user; else the executable's own folder when a
/// "BIN" folder stands there and it is writable (portable use); else "korvenal" in the user's data
/// folder. "BIN" is looked for in the application folder first, then where the program is
/// installed. The temporary folder lies in "korvenal-<uid>" below the system's temporary one, each
/// application folder with one of its own, so that programs at work on different application
/// folders never meet.
StandardFolders findStandardFolders(const FolderSearch& search);

/// The temporary folder of a program at work: private, and gone afterwards when nothing is left in
/// it.
class OwnTemporaryFolder {
 public:
  /// `path` is as `StandardFolders` names it.
  explicit OwnTemporaryFolder(const std::string& path);
  ~OwnTemporaryFolder();
  OwnTemporaryFolder(const OwnTemporaryFolder&) = delete;
  OwnTemporaryFolder& operator=(const OwnTemporaryFolder&) = delete;

  /// With '/' at the end; empty when there can be none.
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// Folder of the running program, with '/' at the end; empty when unknown.
std::string executableFolder();

/// Makes the folder when it is missing. Afterwards it is the user's own, private and no
/// link, or the result is false.
bool makePrivateFolder(const std::string& path);

}  // namespace korvenal
