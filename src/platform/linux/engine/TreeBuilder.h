#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <libisofs/libisofs.h>

#include "platform/linux/engine/EarlierTree.h"
#include "platform/linux/engine/IsoLayout.h"

namespace korvenal {

/// Turns a layout into the library's tree. Used once.
class TreeBuilder {
 public:
  TreeBuilder(const IsoLayout& layout, IsoLayout::Request request)
      : layout_(layout), request_(std::move(request)) {}

  /// The work is done on a thread of its own: with a million files it takes seconds, some of them
  /// in single calls of the library. A stop takes effect between two files.
  std::shared_ptr<PreparedTrack> build(std::string& why);

 private:
  /// A folder or file of the layout, by its index there.
  struct Child {
    std::uint32_t parent = 0;
    bool isFolder = false;
    std::uint32_t index = 0;
  };
  /// What the tree shall tell of a file or folder.
  struct Look {
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
    std::int64_t modified = 0;
    bool leftOut = false;
  };

  bool stopped();
  bool doBuild();
  bool inspectSources();
  bool inspect(std::uint32_t index);
  bool leaveOut(std::uint32_t index, const std::string& reason);
  bool importEarlier();
  bool addChildren();
  std::vector<Child> sortedChildren() const;
  std::string_view nameOf(const Child& child) const;
  Look lookOfFolder(std::uint32_t index) const;
  bool addFolder(const Child& child);
  bool addFile(const Child& child);
  bool addFaultList();
  bool fitFaultList();
  bool makeRoom(IsoDir* parent, const std::string& name, bool forFolder);
  bool insertFile(IsoDir* parent, std::uint32_t index, const std::string& name, int& result);
  void dress(IsoNode* node, const Look& look) const;
  bool measure();

  const IsoLayout& layout_;
  IsoLayout::Request request_;
  std::shared_ptr<PreparedTrack> track_ = std::make_shared<PreparedTrack>();
  std::vector<Look> looks_;  ///< one a file
  IsoNode* faultList_ = nullptr;
  std::vector<IsoDir*> folders_;  ///< one a folder; null where it could not be made
  std::unique_ptr<BlockReader> earlierDisc_;
  UnixTime now_ = 0;  ///< the date of new folders
  std::string why_;
  std::atomic<bool> stop_ = false;
};

}  // namespace korvenal
