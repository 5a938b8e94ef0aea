#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/ActionState.h"
#include "core/Workspace.h"
#include "core/frmAddFiles.h"
#include "job/Job.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Profile.h"

namespace korvenal {

struct AddItemsServices {
  ActionState& state;
  Desktop& desktop;
  Files& files;
  const Workspace& workspace;
  Profile& profile;
};

/// The ways in which items enter the job. Paths are native and absolute; an item that is refused
/// is told in a message and never ends a list, unless the person wants it to.
class AddItems {
 public:
  AddItems(AddItemsServices services, Job& job) : services_(services), job_(job) {}

  /// Adds paths picked in the browser, under the worker dialog. How many of them were handled;
  /// the rest was not looked at.
  std::size_t doPickItems(const std::vector<std::string>& paths);
  /// Adds paths dropped on the table, in the same way.
  std::size_t doDropItems(const std::vector<std::string>& paths);

  /// The work of the worker dialog.
  std::size_t doGetFiles(const std::vector<std::string>& paths, frmAddFiles& worker);
  std::size_t doGetFiles2(const std::vector<std::string>& paths, frmAddFiles& worker);

  /// Adds one row for a path that may not exist. `type` (1 file, 0 folder) becomes what the path
  /// is when it exists.
  void doCreateItem(int& type, const std::string& name, const std::string& path);

  /// Adds the files that a play list names. The limit of items does not hold here. False when no
  /// play list was read.
  bool doImportM3U();

 private:
  /// The rows by their names in upper case, so that a long list costs no search a path.
  using RowsByName = std::unordered_map<std::string, int>;

  std::size_t doRunWorker(int workerMode, const std::vector<std::string>& paths);
  std::size_t doAddPaths(const std::vector<std::string>& paths, const std::string& refusalTitle,
                         frmAddFiles& worker);
  /// False ends the list.
  bool doAddPath(const std::string& path, const std::string& refusalTitle, RowsByName& names);
  RowsByName rowsByName() const;
  /// Asks about a name that is there already; false: the person gives up.
  bool doTellDuplicate(const std::string& name, int row);
  void doAddRow(const std::string& path, const std::string& name, const FileInfo& info);
  bool doImportLines(std::string_view text, const std::string& folder);
  /// What an entry of a play list names: its bytes as they are, else read as Latin-1.
  struct Listed {
    std::string path;  ///< empty when there is no such file
    FileInfo info;
  };
  Listed findListed(std::string_view entry, const std::string& folder) const;

  AddItemsServices services_;
  Job& job_;
};

}  // namespace korvenal
