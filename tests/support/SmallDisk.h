#pragma once

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace korvenal::test {

/// A disk of so many bytes in place of a folder, for this process and those that it starts.
class SmallDisk {
 public:
  SmallDisk(const std::string& folder, std::int64_t bytes) : folder_(folder) {
    const std::string size = "size=" + std::to_string(bytes);
    mounted_ = isAlone() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               ::mount("tmpfs", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
  }
  ~SmallDisk() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  /// False where this user may not have one.
  explicit operator bool() const { return mounted_; }
  std::int64_t freeBytes() const {
    return static_cast<std::int64_t>(std::filesystem::space(folder_).available);
  }
  /// Takes what is left.
  void fill() const {
    std::ofstream filler(folder_ + "/filler", std::ios::binary);
    const std::string piece(4096, 'x');
    while (filler.write(piece.data(), static_cast<std::streamsize>(piece.size())).flush()) {
    }
  }

 private:
  /// What is mounted from now on shows nowhere else.
  static bool isAlone() {
    if (::unshare(CLONE_NEWNS) == 0) return true;
    const std::string user = std::to_string(::getuid()), group = std::to_string(::getgid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << " " << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << " " << group << " 1";
    return true;
  }

  std::string folder_;
  bool mounted_ = false;
};

}  // namespace korvenal::test
