#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "job/AddItems.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Form.h"
#include "platform/Profile.h"

namespace korvenal {

/// The size at which the browser was left, in twips; kept while the program runs. 0: never opened.
struct BrowserSize {
  int width = 0;
  int height = 0;
};

/// Picks items for the job: the entries of one folder at a time, each with a box. Ticks hold for
/// the folder in view only.
class frmBrowse : public Form {
 public:
  struct Services {
    Desktop& desktop;
    const FileView& files;
    Profile& profile;
    AddItems& items;
    BrowserSize& size;
  };
  struct Entry {
    std::string_view name;  ///< as long as its folder is shown
    FileInfo info;
    bool ticked = false;
    bool handled = false;  ///< was given to the job already, taken or refused
    bool isFolder() const { return info.kind == FileInfo::Kind::Folder; }
  };
  enum class Ticks { None, Some, All };
  enum Command : int { CloseCommand = 0, AddCommand = 1 };
  enum View : int { Thumbnails, SmallIcon, LargeIcon, List, Report };

  static constexpr const char* ViewTexts[] = {"T&humbnails", "&Small Icon", "Large Ico&n", "&List",
                                              "&Report"};
  static constexpr int MinimumWidth = 600;   ///< pixels
  static constexpr int MinimumHeight = 400;  ///< pixels

  /// Opens on the folder that the browser showed last, or on the home folder.
  frmBrowse(const Services& services, const std::string& homeFolder);

  View view = Report;
  const std::string& folder() const { return folder_; }
  /// Folders first, each kind in the order of the bytes of the names.
  const std::vector<Entry>& entries() const { return listing_->entries; }
  std::string pathOf(const Entry& entry) const;
  std::size_t tickedCount() const { return ticked_; }
  /// The state of the box that ticks all.
  Ticks SelectAll() const;
  bool isAddEnabled() const { return ticked_ > 0; }
  /// True when the size that was left does not fit the screen (twips).
  bool opensMaximized(int screenWidth) const;

  /// Shows a folder with nothing ticked. False, with nothing changed, for what is no folder.
  bool doShowFolder(const std::string& path);
  void doShowParent();
  void doTick(std::size_t entry, bool on);
  void doSelectAll(bool on);
  /// The buttons: add what is ticked, and close.
  void CMD(int command);
  void doCloseBox() override;
  const BrowserSize& keptSize() const { return services_.size; }
  /// The size at which the window is left, in twips.
  void doKeepSize(int width, int height) { services_.size = {width, height}; }

 private:
  /// A folder may hold a million entries: nothing of it is given back name by name.
  struct Listing {
    std::pmr::monotonic_buffer_resource names;
    std::vector<Entry> entries;
  };

  std::unique_ptr<Listing> listed(const std::string& folder) const;
  void doAdd();
  void doCount();

  Services services_;
  std::string folder_;
  std::unique_ptr<Listing> listing_ = std::make_unique<Listing>();
  std::size_t ticked_ = 0;
  bool adding_ = false;
  int listings_ = 0;  ///< a listing that a later one overtook is dropped
};

}  // namespace korvenal
