#include "support/MemoryFiles.h"

namespace korvenal::test {

namespace {

class MemoryWriter : public FileWriter {
 public:
  explicit MemoryWriter(std::string& content) : content_(content) {}
  bool write(std::string_view bytes) override {
    content_ += bytes;
    return true;
  }
  FileOutcome finish() override { return {}; }

 private:
  std::string& content_;
};

}  // namespace

void MemoryFiles::addFolder(const std::string& path, UnixTime modified) {
  looks[path] = {.kind = FileInfo::Kind::Folder, .size = {}, .modified = modified};
}

void MemoryFiles::addFile(const std::string& path, std::int64_t size, UnixTime modified) {
  looks[path] = {.kind = FileInfo::Kind::File, .size = size, .modified = modified};
}

FileInfo MemoryFiles::doGetInfo(const std::string& path) const {
  if (const auto look = looks.find(path); look != looks.end()) return look->second;
  const auto content = contents.find(path);
  if (content == contents.end()) return {};
  return {.kind = FileInfo::Kind::File, .size = static_cast<std::int64_t>(content->second.size())};
}

std::optional<std::string> MemoryFiles::readAll(const std::string& path,
                                                std::int64_t maxBytes) const {
  const auto content = contents.find(path);
  if (content == contents.end() || static_cast<std::int64_t>(content->second.size()) > maxBytes)
    return std::nullopt;
  return content->second;
}

bool MemoryFiles::doDeleteFile(const std::string& path) {
  contents.erase(path);
  return true;
}

bool MemoryFiles::doCreateFolderPath(const std::string& path) {
  addFolder(path);
  return true;
}

bool MemoryFiles::doRename(const std::string& from, const std::string& to) {
  auto moved = contents.extract(from);
  if (moved.empty()) return false;
  contents[to] = std::move(moved.mapped());
  return true;
}

std::unique_ptr<FileWriter> MemoryFiles::doCreateFile(const std::string& path) {
  if (path.starts_with(brokenFolder)) return nullptr;
  return std::make_unique<MemoryWriter>(contents[path] = std::string());
}

FileOutcome MemoryFiles::writeAll(const std::string& path, std::string_view content) {
  contents[path] = content;
  return {};
}

}  // namespace korvenal::test
