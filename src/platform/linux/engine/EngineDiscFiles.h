#pragma once

#include "platform/linux/DiscFiles.h"
#include "platform/linux/engine/Engine.h"

namespace korvenal {

/// Files on the discs in the engine's drives. A disc that is being prepared, burned or erased, and
/// one in an open tray, has none.
class EngineDiscFiles : public DiscFiles {
 public:
  /// The engine must outlive this.
  explicit EngineDiscFiles(Engine& engine) : engine_(engine) {}

  FileInfo doGetInfo(DiscTree tree, std::string_view discPath) override;
  std::optional<VolumeInfo> doGetVolumeInfo(char letter) override;
  std::vector<DiscSession> sessions(char letter) override;
  std::vector<std::string> listFolder(DiscTree tree, std::string_view discPath) override;
  std::unique_ptr<FileStream> open(DiscTree tree, std::string_view discPath) override;

 private:
  Engine& engine_;
};

}  // namespace korvenal
