#pragma once

#include <deque>
#include <set>
#include <string>

#include "plan/Estimate.h"
#include "plan/SourceScan.h"
#include "plan/frmSplit.h"
#include "support/ListFiles.h"
#include "support/ListWalker.h"
#include "support/ManualClock.h"
#include "support/ScriptedDesktop.h"

namespace korvenal::test {

/// Archive bits that are set but for the paths named.
class ListedBits : public ArchiveBits {
 public:
  std::set<std::string> cleared;
  bool doHasArchiveBit(const std::string& path, const FileInfo&) override {
    return !cleared.contains(path);
  }
  void doClearArchiveBit(const std::string&, const FileInfo&) override {}
  void begin() override {}
  void commit() override {}
};

/// Archives that hold the text itself, so that its size is known and it can be read.
class PlainArchive : public IndexArchive {
 public:
  explicit PlainArchive(ListFiles& files) : files_(files) {}
  bool fails = false;
  std::string packed;  ///< what an archive holds instead; empty: the text

  int compress(const std::string& archive, const std::string& file, const std::string&,
               const Pump&) override {
    if (!fails) files_.contents[archive] = packed.empty() ? files_.contents[file] : packed;
    return fails ? 1 : 0;
  }
  int extract(const std::string&, const std::string&, const std::string&, long long,
              const Pump&) override {
    return 1;
  }
  std::string entryName(const std::string&) override { return {}; }
  bool isArchive(const std::string&) override { return false; }

 private:
  ListFiles& files_;
};

/// A job over scripted trees, and the scan of it.
class ScanFixture {
 public:
  ListFiles files;
  ListWalker list;
  ListedBits bits;
  PlainArchive archive{files};
  ManualClock clock;
  ScriptedDesktop desktop;
  ActionState state;
  Workspace workspace = Workspace::below("/app/", "/app/BIN/", "/home/");
  Profile profile{files, "/app/settings"};
  Settings settings{profile};
  RunGrids grids{state, desktop, clock, files, workspace};
  Job job;
  Plan plan;
  Walker* walker = &list;
  Files* usedFiles = &files;

  std::deque<int> splitChoices;  ///< for frmSplit, in order
  std::vector<std::string> splitMessages;

  ScanFixture() {
    workspace.TempFolder = "/tmp/";
    job.txJobName = "Job";
    desktop.onForm = [this](Form& form) { answer(form); };
  }

  void addItem(const std::string& path, const ListEntry& entry, bool subfolders = true) {
    list.add(path, entry, files);
    addRow(path, entry.name, entry.isFolder, subfolders);
  }

  void addRow(const std::string& path, const std::string& name, bool isFolder,
              bool subfolders = true) {
    const int row = job.vsContents.addRow();
    job.vsContents.setText(row, ContentsName, name);
    job.vsContents.setText(row, ContentsPath, path);
    if (isFolder)
      job.vsContents.setCheck(row, ContentsSubfolder,
                              subfolders ? Table::Check::Ticked : Table::Check::Unticked);
  }

  SourceScan makeScan() {
    return SourceScan(
        {state, settings, workspace, desktop, clock, *usedFiles, *walker, bits, archive, grids},
        job, plan);
  }

  void scan() {
    SourceScan scan = makeScan();
    frmAddFiles worker(state, desktop, [&](frmAddFiles& form) { scan.doScanFiles(form); });
    desktop.doShowModal(worker);
  }

  std::vector<std::string> column(int col) const {
    std::vector<std::string> texts;
    for (int row = 1; row < plan.vsBuffer.Rows(); ++row)
      texts.push_back(plan.vsBuffer.text(row, col));
    return texts;
  }

 private:
  void answer(Form& form) {
    auto* split = dynamic_cast<frmSplit*>(&form);
    if (split == nullptr || splitChoices.empty()) return;
    splitMessages.push_back(split->message);
    const int choice = splitChoices.front();
    splitChoices.pop_front();
    if (choice == frmSplit::SplitIt) split->pbSplitIt();
    if (choice == frmSplit::SkipIt) split->pbSkipIt();
    if (choice == frmSplit::Stop) split->pbStop();
    if (choice == frmSplit::SplitAll) split->pbSplitAll();
  }
};

inline ListEntry file(const std::string& name, std::int64_t size,
                      UnixTime modified = 1'600'000'000) {
  return {.name = name, .size = size, .modified = modified};
}

inline ListEntry folder(const std::string& name, std::vector<ListEntry> entries,
                        UnixTime modified = 1'600'000'000) {
  return {.name = name, .isFolder = true, .modified = modified, .entries = std::move(entries)};
}

}  // namespace korvenal::test
