#include "support/TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace korvenal::test {

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "korvenal-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern + "/";
}

TempDir::~TempDir() {
  std::error_code ignored;
  // Tests take rights away from folders; give them back so that all can be removed.
  for (auto it = fs::recursive_directory_iterator(
           path_, fs::directory_options::skip_permission_denied, ignored);
       it != fs::recursive_directory_iterator(); it.increment(ignored)) {
    if (ignored) break;
    if (it->is_directory(ignored) && !it->is_symlink(ignored))
      fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
  }
  fs::remove_all(path_, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
  const fs::path file = path_ + name;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
  return file.string();
}

std::string TempDir::makeFolder(const std::string& name) const {
  fs::create_directories(path_ + name);
  return path_ + name;
}

std::string TempDir::sparse(const std::string& name, std::uintmax_t bytes) const {
  const std::string file = write(name, "");
  fs::resize_file(file, bytes);
  return file;
}

std::string TempDir::read(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> TempDir::names(const std::string& folder) {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    found.push_back(entry.path().filename());
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace korvenal::test
