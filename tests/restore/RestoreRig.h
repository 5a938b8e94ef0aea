#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/Profile.h"
#include "platform/linux/DiscFiles.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/LinuxTargetFolder.h"
#include "platform/linux/ZipIndexArchive.h"
#include "restore/IndexLines.h"
#include "restore/IndexOpening.h"
#include "restore/RestoreFind.h"
#include "restore/RestoreRun.h"
#include "support/FakeEngine.h"
#include "support/ManualClock.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {

/// What lies on the discs of the scripted drives, by the label of the disc.
class MemoryDiscs : public DiscFiles {
 public:
  using Content = std::map<std::string, std::string>;  ///< disc path -> bytes

  explicit MemoryDiscs(FakeEngine& engine) : engine_(engine) {}

  std::map<std::string, Content> contents;
  UnixTime modified = 1'600'000'000;

  FileInfo doGetInfo(DiscTree tree, std::string_view discPath) override;
  std::optional<VolumeInfo> doGetVolumeInfo(char letter) override;
  std::vector<DiscSession> sessions(char letter) override;
  std::vector<std::string> listFolder(DiscTree tree, std::string_view discPath) override;
  std::unique_ptr<FileStream> open(DiscTree tree, std::string_view discPath) override;

 private:
  const Content* inDrive(char letter) const;

  FakeEngine& engine_;
};

/// Real target folders that are full at the n-th copy, or lose what they took.
class BreakableTargets : public TargetFolders {
 public:
  explicit BreakableTargets(DiscFiles* discs) : good_(discs) {}
  int failingCopy = 0;  ///< from 1; 0: none fails
  int copies = 0;
  int failingAppend = 0;  ///< the same for parts of split files, which cannot be read
  int appends = 0;
  int failingSync = 0;  ///< the medium did not take what was written
  int syncs = 0;
  std::unique_ptr<TargetFolder> open(const std::string& path) override;

 private:
  LinuxTargetFolders good_;
};

/// Everything that a restore works with, over scripted drives and a real target folder.
struct RestoreRig {
  RestoreRig();

  TempDir folder;
  ManualClock clock;
  ScriptedDesktop desktop;
  FakeEngine engine{clock};
  MemoryDiscs discs{engine};
  LinuxFiles files{&discs};
  BreakableTargets targets{&discs};
  ZipIndexArchive archive{files};
  Workspace workspace;
  Profile profile;
  Settings settings{profile};
  ActionState state;
  DeviceSettings devices;
  RunGrids grids;
  Records records;
  RunPage runPage;
  RestorePage page{desktop};
  RestoreSelection selection{page, desktop};
  RestoreFind find{page, desktop};
  std::vector<std::string> prompts;  ///< "reason: discs still wanted"
  /// Answers a prompt; by default the wanted disc goes into the first drive.
  std::function<void(int reason, const DiscRequest&)> onPrompt;
  IndexOpening opening;
  RestoreRun run;

  std::string target(const std::string& path) const { return folder / ("target/" + path); }
  std::string restored(const std::string& path) const { return TempDir::read(target(path)); }
  bool stands(const std::string& path) const { return files.doFileExists(target(path)); }
  void insert(char letter, const std::string& label);
  void insertDisc(int number) { insert('V', "Backup #" + std::to_string(number)); }
  /// Opens the index and selects all of it.
  void openAll(const IndexLines& index);
  /// Opens the index without selecting anything.
  void open(const std::string& text);
  std::string note(int row) const { return grids.vsOutput[1].text(row, 7); }
  bool hasEvent(const std::string& text) const;
  /// The messages of the error record, one a line.
  std::vector<std::string> errors() const;
};

}  // namespace korvenal::test
