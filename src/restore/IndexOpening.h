#pragma once

#include <functional>
#include <string>

#include "core/ActionState.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "device/DeviceSettings.h"
#include "device/LoadPrompt.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"
#include "restore/IndexFilling.h"
#include "restore/IndexText.h"
#include "restore/RestorePage.h"
#include "restore/RestoreSelection.h"
#include "restore/frmReadLog.h"

namespace korvenal {

/// What the opening of an index works with. All of it outlives the opening.
struct IndexServices {
  ActionState& state;
  Desktop& desktop;
  Files& files;
  IndexArchive& archive;
  Settings& settings;
  const DeviceSettings& devices;
  const Workspace& workspace;
};

/// Finds the index of a backup on the drives of the device mode, reads it and fills the tree.
class IndexOpening {
 public:
  using AskLoadDisc = std::function<void(int reason, DiscRequest&)>;

  IndexOpening(const IndexServices& services, RestorePage& page, RestoreSelection& selection,
               AskLoadDisc askLoadDisc);
  IndexOpening(const IndexOpening&) = delete;
  IndexOpening& operator=(const IndexOpening&) = delete;

  /// The whole action: search, choice, check, tree, and the question whether to select all. With
  /// no index in any drive a message tells so or, when `quiet`, the first disc is asked for and
  /// the search done once more. True when an index was opened.
  bool doReadBackupIndex(bool quiet);
  /// The same with an index file: a native path or a path on a drive.
  bool doOpenIndexFile(const std::string& path);

  /// The indexes in the root folders of the drives' discs, of all their sessions.
  FoundIndexes doSearchIndexFiles() const;
  /// Loads and checks the file. False, after a message, when it is no index: what was opened
  /// before stays.
  bool doReadLOG2(const std::string& path);

  /// Asks for an index file and opens it.
  bool doPickIndexFile();

  /// Asks for the target folder and keeps it for the next start.
  void doBrowseTarget();
  /// Takes a target folder; kept for the next start when there is such a folder.
  void doSetTarget(const std::string& folder);

 private:
  enum class Search { Done, AskAgain };

  Search doFindBackupIndex(bool quiet);
  void doChooseIndex(const FoundIndexes& indexes);
  bool doAskForFirstDisc();
  bool doLoadIndexFile(const std::string& path);
  /// The page takes over where the index is from, now that nothing can fail any more.
  void takeOrigin(const IndexHeader& header);
  bool isInUnmarkedSession(const std::string& path) const;
  bool doFillRestoreTable();
  void showHeader(const IndexFilling& filling);
  void doAfterOpening();
  void doFormatError();

  IndexServices services_;
  RestorePage& page_;
  RestoreSelection& selection_;
  AskLoadDisc askLoadDisc_;
  IndexText vsTXT;
  struct Origin {
    std::string path;
    std::string name;  ///< of the file in the archive
  };
  Origin opened_;  ///< of what `vsTXT` holds
};

}  // namespace korvenal
