#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "burn/BackupRun.h"
#include "platform/Paths.h"
#include "support/FakeEngine.h"
#include "support/ScriptedDesktop.h"

namespace korvenal::test {

/// Files in memory; paths on drives lead to the discs of a FakeEngine.
class MemoryFiles : public Files {
 public:
  explicit MemoryFiles(FakeEngine& engine) : engine_(engine) {}

  std::map<std::string, std::string> texts;
  std::map<std::string, FileInfo> sources;  ///< files of which only the look matters

  FileInfo doGetInfo(const std::string& path) const override;
  std::optional<VolumeInfo> doGetVolumeInfo(const std::string& path) const override;
  std::optional<std::string> readAll(const std::string& path, std::int64_t) const override;
  std::optional<std::string> readPart(const std::string&, std::int64_t,
                                      std::int64_t) const override {
    return {};
  }
  std::vector<std::string> listFolder(const std::string&) const override { return {}; }
  bool doDeleteFile(const std::string& path) override { return texts.erase(path) < 2; }
  bool doCreateFolderPath(const std::string&) override { return true; }
  bool doRename(const std::string&, const std::string&) override { return false; }
  void doClearReadOnly(const std::string&) override {}
  std::unique_ptr<FileWriter> doCreateFile(const std::string&) override { return nullptr; }
  FileOutcome writeAll(const std::string& path, std::string_view content) override;

 private:
  FakeEngine& engine_;
};

/// Packs nothing: every index stays plain text.
class NoArchive : public IndexArchive {
 public:
  int compress(const std::string&, const std::string&, const std::string&, const Pump&) override {
    return 1;
  }
  int extract(const std::string&, const std::string&, const std::string&, long long,
              const Pump&) override {
    return 1;
  }
  std::string entryName(const std::string&) override { return {}; }
  bool isArchive(const std::string&) override { return false; }
};

class RecordedBits : public ArchiveBits {
 public:
  std::vector<std::string> cleared;
  std::map<std::string, FileInfo> states;  ///< for which the bits were cleared
  bool doHasArchiveBit(const std::string&, const FileInfo&) override { return true; }
  void doClearArchiveBit(const std::string& path, const FileInfo& info) override {
    cleared.push_back(path);
    states[path] = info;
  }
  void begin() override {}
  void commit() override {}
};

/// Everything that a backup run stands on, with one drive V: and a job of CDs. The scan makes the
/// plan below; the prompt answers with OK after new blank discs have been put in.
struct BurnWorld {
  BurnWorld();

  ManualClock clock;
  ActionState state;
  ScriptedDesktop desktop;
  FakeEngine engine{clock};
  MemoryFiles files{engine};
  RecordedBits bits;
  NoArchive archive;
  Workspace workspace = Workspace::below("/app/", "/app/BIN/", "/home/");
  RunGrids grids{state, desktop, clock, files, workspace};
  RunPage page;
  Records records{files, desktop, grids, workspace};
  Profile profile{files, workspace.gSettingsFile};
  Settings settings{profile};
  DeviceSettings devices;
  Job job;
  Plan plan;
  BurnServices services{state, engine,  desktop,  clock,   files,     bits, archive, grids,
                        page,  records, settings, devices, workspace, job,  plan};

  std::vector<int> promptedFor;  ///< disc numbers asked for
  bool promptGivesUp = false;
  FakeDisc discToLoad;  ///< what the prompt puts into every open or empty drive
  int scans = 0;

  BackupRun::Steps steps();
  void useDrives(const std::string& letters, int mode);

  /// Disc 1: index, Photos\, a.jpg and the first piece of big.iso; disc 2: its second piece and
  /// b.jpg; disc 3: c.jpg.
  void planThreeDiscs();
  /// One disc with one file of the size.
  void planOneFile(std::int64_t bytes = 3000);
  PlanTable::Link addFolder(PlanTable::Link parent, const std::string& name, RowType type,
                            int disc);
  void addFile(PlanTable::Link folder, const std::string& name, std::int64_t bytes, int disc);
  void addPiece(PlanTable::Link split, const PlanTable::Range& range, int disc);

  /// The events of the page as one text, without times.
  std::string events() const;
  bool hasEvent(const std::string& text) const;
  std::string note(int row) const { return grids.vsOutput[0].text(row, 7); }

 private:
  PlanTable::Row& addRow(RowType type, PlanTable::Link folder, const std::string& name,
                         std::int64_t bytes, int disc);
};

}  // namespace korvenal::test
