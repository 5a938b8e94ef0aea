#include "platform/linux/StandardFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace korvenal {

namespace {

std::string withSlash(std::string path) {
  if (path.empty() || path.back() != '/') path += '/';
  return path;
}

bool isFolder(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// An absolute path from the environment; anything else counts as not set.
std::string folderFromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? withSlash(value) : std::string();
}

std::string homeFolder() {
  std::string home = folderFromEnvironment("HOME");
  if (!home.empty()) return home;
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr && found->pw_dir[0] == '/' ? withSlash(found->pw_dir) : "/";
}

std::string applicationFolder(const FolderSearch& search, const std::string& home) {
  if (!search.wantedApplication.empty()) return withSlash(search.wantedApplication);
  const std::string& own = search.executableFolder;
  if (!own.empty() && isFolder(own + "BIN") && access(own.c_str(), W_OK) == 0) return own;
  const std::string data = folderFromEnvironment("XDG_DATA_HOME");
  return (data.empty() ? home + ".local/share/" : data) + "korvenal/";
}

std::string binFolder(const FolderSearch& search, const std::string& application) {
  const std::string& own = search.executableFolder;
  for (const std::string& folder :
       {application + "BIN/", own + "BIN/", own + "../share/korvenal/BIN/",
        std::string("/usr/local/share/korvenal/BIN/"), std::string("/usr/share/korvenal/BIN/")}) {
    if (isFolder(folder)) return folder;
  }
  return application + "BIN/";
}

/// A short name that differs for different paths (FNV-1a).
std::string nameOf(const std::string& path) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : path) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  constexpr char Digits[] = "0123456789abcdef";
  std::string name;
  for (int shift = 60; shift >= 0; shift -= 4) name += Digits[(hash >> shift) & 15];
  return name;
}

/// The one path of a folder, whatever way leads to it; it need not exist.
std::string onePathOf(const std::string& folder) {
  std::error_code error;
  const auto path = std::filesystem::weakly_canonical(folder, error);
  return withSlash(error ? folder : path.string());
}

std::string temporaryFolder(const std::string& application) {
  std::string system = folderFromEnvironment("TMPDIR");
  if (system.empty() || !isFolder(system)) system = "/tmp/";
  return system + "korvenal-" + std::to_string(getuid()) + "/" + nameOf(onePathOf(application)) +
         "/";
}

std::string folderAbove(const std::string& folder) {
  return folder.substr(0, folder.rfind('/', folder.size() - 2));
}

}  // namespace

bool makePrivateFolder(const std::string& path) {
  constexpr mode_t Private = 0700;
  if (mkdir(path.c_str(), Private) != 0 && errno != EEXIST) return false;
  struct stat info {};
  if (lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != getuid())
    return false;
  return (info.st_mode & 07777) == Private || chmod(path.c_str(), Private) == 0;
}

std::string executableFolder() {
  std::vector<char> path(PATH_MAX);
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  if (length <= 0) return {};
  const std::string file(path.data(), static_cast<std::size_t>(length));
  return file.substr(0, file.rfind('/') + 1);
}

StandardFolders findStandardFolders(const FolderSearch& search) {
  StandardFolders folders;
  folders.home = homeFolder();
  folders.application = applicationFolder(search, folders.home);
  folders.bin = binFolder(search, folders.application);
  folders.temporary = temporaryFolder(folders.application);
  return folders;
}

OwnTemporaryFolder::OwnTemporaryFolder(const std::string& path) {
  // Between the two steps another program may end, and take the folder above with it.
  constexpr int MostTries = 10;
  for (int i = 0; i < MostTries && path_.empty() && makePrivateFolder(folderAbove(path)); ++i)
    if (makePrivateFolder(path.substr(0, path.size() - 1))) path_ = path;
}

OwnTemporaryFolder::~OwnTemporaryFolder() {
  // What is not empty stays.
  if (!path_.empty() && rmdir(path_.c_str()) == 0) rmdir(folderAbove(path_).c_str());
}

}  // namespace korvenal
