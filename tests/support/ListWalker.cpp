#include "support/ListWalker.h"

#include "platform/Paths.h"

namespace korvenal::test {

namespace {

WalkEntry asWalkEntry(const ListEntry& entry, const std::string& folder) {
  WalkEntry result;
  result.name = entry.name;
  result.folder = folder;
  result.isFolder = entry.isFolder;
  result.holdable = entry.holdable;
  result.size = entry.size;
  result.modified = entry.modified;
  return result;
}

bool walkEntries(const ListEntry& tree, const std::string& path, bool descend, WalkSink& sink) {
  for (const ListEntry& entry : tree.entries) {
    if (entry.isFolder && !descend) continue;
    const WalkEntry walked = asWalkEntry(entry, path);
    if (entry.isFolder && entry.holdable) {
      sink.enterFolder(walked);
      if (!walkEntries(entry, path + entry.name + "/", descend, sink)) return false;
    }
    if (!sink.report(walked)) return false;
  }
  return true;
}

}  // namespace

void ListWalker::add(const std::string& path, const ListEntry& entry, ListFiles& files) {
  trees[path] = entry;
  files.addFolder(std::string(Paths::doGetFolderPart(path)));
  if (entry.isFolder)
    files.addFolder(path, entry.modified);
  else
    files.addFile(path, entry.size, entry.modified);
}

void ListWalker::walk(const std::string& folder, bool descend, const WalkFilters&, WalkSink& sink) {
  for (const auto& [reason, path] : skips)
    if (!sink.skipped(reason, path)) return;
  walkEntries(trees.at(folder), Paths::withEnd(folder), descend, sink);
}

void ListWalker::walkFile(const std::string& path, const WalkFilters&, WalkSink& sink) {
  const std::string folder = Paths::withEnd(Paths::doGetFolderPart(path));
  ListEntry entry = trees.at(path);
  entry.name = Paths::doGetFilePart(path);
  sink.report(asWalkEntry(entry, folder));
}

}  // namespace korvenal::test
