#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace korvenal::test {

/// A private folder for one test, removed with all it holds.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  /// With '/' at the end.
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + name; }

  /// Writes a file, making the folders above it; its native path.
  std::string write(const std::string& name, const std::string& content) const;
  std::string makeFolder(const std::string& name) const;
  /// A sparse file of so many bytes.
  std::string sparse(const std::string& name, std::uintmax_t bytes) const;
  static std::string read(const std::string& file);
  /// What lies in a folder, in the order of the names.
  static std::vector<std::string> names(const std::string& folder);

 private:
  std::string path_;
};

}  // namespace korvenal::test
