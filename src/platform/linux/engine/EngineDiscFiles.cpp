#include "platform/linux/engine/EngineDiscFiles.h"

namespace korvenal {

FileInfo EngineDiscFiles::doGetInfo(DiscTree tree, std::string_view discPath) {
  const auto reader = engine_.readerOf(tree);
  return reader ? reader->info(discPath) : FileInfo();
}

std::optional<VolumeInfo> EngineDiscFiles::doGetVolumeInfo(char letter) {
  const auto reader = engine_.readerOf(letter);
  if (!reader) return std::nullopt;
  const DiscState state = engine_.stateOf(letter);
  VolumeInfo info;
  info.label = reader->label();
  info.fileSystem = "CDFS";
  info.totalBytes = state.totalBlocks * BlockBytes;
  info.freeBytes = state.freeBlocks * BlockBytes;
  return info;
}

std::vector<DiscSession> EngineDiscFiles::sessions(char letter) {
  return engine_.sessionsOf(letter);
}

std::vector<std::string> EngineDiscFiles::listFolder(DiscTree tree, std::string_view discPath) {
  const auto reader = engine_.readerOf(tree);
  return reader ? reader->list(discPath) : std::vector<std::string>();
}

std::unique_ptr<FileStream> EngineDiscFiles::open(DiscTree tree, std::string_view discPath) {
  const auto reader = engine_.readerOf(tree);
  return reader ? reader->openFile(discPath) : nullptr;
}

}  // namespace korvenal
