#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "core/frmAddFiles.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "plan/ScanFilters.h"
#include "plan/SkippedEntries.h"
#include "plan/SourceScanServices.h"

namespace korvenal {

/// The first step of a plan: every item of the job becomes the rows of what lies in it. A
/// sub-folder's row stands above its contents at once: its place is kept when it is entered, and
/// taken when the walk reports it.
class Expansion : private WalkSink {
 public:
  enum class Outcome { Done, Stopped, TooManyRows };
  static constexpr int MaxTableRows = 1'000'000;  ///< the header row counts

  Expansion(const SourceScanServices& services, const Job& job, Plan& plan, frmAddFiles& worker);

  /// Fills `vsBuffer`, `TotalSize`, `skippedNotes` and `missed`. A top folder that is to be left
  /// out has no row afterwards.
  Outcome run();

 private:
  struct OpenFolder {
    int row;  ///< the place kept
    PlanTable::Link link;
    std::size_t pathLength;  ///< of the folder that holds it, to know its report again
  };

  void enterFolder(const WalkEntry& folder) override;
  bool report(const WalkEntry& entry) override;
  bool skipped(WalkSkip reason, const std::string& path) override;
  bool pause() override;

  void excludeName(const std::string& path);
  /// The filters of a walk that starts at an item.
  WalkFilters filtersFor(const std::string& path, const FileInfo& info) const;
  void expandItem(int item);
  void expandFolder(int item, const std::string& path, const FileInfo& info);
  void expandFile(int item, const std::string& path);
  void addReported(const WalkEntry& entry);
  void addReportedFolder(const WalkEntry& entry);
  void addReportedFile(const WalkEntry& entry);
  void countRow();
  bool isOpen(const WalkEntry& entry) const;
  bool passesDifferential(const WalkEntry& entry) const;
  PlanTable::Row rowOf(const WalkEntry& entry) const;
  void expandAt(int item, const std::string& path, const FileInfo& info);
  std::string itemName(int item, const std::string& path) const;
  void finish();

  const SourceScanServices& services_;
  const Job& job_;
  Plan& plan_;
  PlanTable& table_;
  frmAddFiles& worker_;
  const WalkFilters filters_;
  const OwnFiles ownFiles_;

  bool dropTopFolder_ = false;
  int bufferRows_ = 0;                          ///< rows reported so far, items' own included
  PlanTable::Link here_ = PlanTable::DiscRoot;  ///< the folder whose entries come now
  std::vector<OpenFolder> open_;
  const std::string* fileItemPath_ = nullptr;  ///< set while a file item is expanded
  std::string fileItemName_;
  /// Names at the root of the disc that are taken. Only items stand there, and within a folder of
  /// the sources no two entries have one name; so no disc path comes twice.
  std::unordered_set<std::string> rootNames_;
  SkippedEntries skippedEntries_;
};

}  // namespace korvenal
