#pragma once

#include <cstdio>
#include <cstring>
#include <string>

#include "plan/SourceScan.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ZipIndexArchive.h"

namespace korvenal::bench {

/// A front end that nobody sits at.
class EmptyDesktop : public Desktop {
 public:
  void doYield() override {}
  void doRest() override {}
  Answer doShowMessage(const MessageBox& message) override {
    std::fprintf(stderr, "%s\n", message.text.c_str());
    return Answer::Ok;
  }
  void doShowModal(Form& form) override { form.doActivate(); }
  std::string doAskOpenFile(const FileDialog&) override { return {}; }
  std::string doAskSaveFile(const FileDialog&) override { return {}; }
  std::string doAskFolder(const std::string&, const std::string&) override { return {}; }
  void doSetWaitPointer(bool) override {}
  void doPrintTable(const Table&, const std::string&) override {}
  void doPlaySound(const std::string&) override {}
  bool doOpenOutside(const std::string&) override { return false; }
  std::string doGetTypeName(const std::string&, bool) override { return {}; }
};

class SetBits : public ArchiveBits {
 public:
  bool doHasArchiveBit(const std::string&, const FileInfo&) override { return true; }
  void doClearArchiveBit(const std::string&, const FileInfo&) override {}
  void begin() override {}
  void commit() override {}
};

/// A job of one folder, and the scan of it with a given walker and given files.
class PlanBench {
 public:
  PlanBench(Walker& walker, Files& files, const std::string& folder, const std::string& temporary)
      : files_(files), walker_(walker), workspace_(Workspace::below("/", "/", "/")) {
    workspace_.TempFolder = temporary;
    job.txJobName = "Bench";
    job.comboDiscType = 2;
    const int row = job.vsContents.addRow();
    job.vsContents.setText(row, ContentsName, "Tree");
    job.vsContents.setText(row, ContentsPath, folder);
    job.vsContents.setCheck(row, ContentsSubfolder, Table::Check::Ticked);
  }

  void scan() {
    SourceScan scan(
        {state, settings_, workspace_, desktop, clock_, files_, walker_, bits_, archive, grids_},
        job, plan);
    frmAddFiles worker(state, desktop, [&](frmAddFiles& form) { scan.doScanFiles(form); });
    worker.doActivate();
  }

  Job job;
  Plan plan;
  ActionState state;
  EmptyDesktop desktop;

 private:
  Files& files_;
  Walker& walker_;
  Workspace workspace_;
  SystemClock clock_;
  SetBits bits_;
  Profile profile_{files_, "/nonexistent"};
  Settings settings_{profile_};
  RunGrids grids_{state, desktop, clock_, files_, workspace_};

 public:
  ZipIndexArchive archive{files_};
};

/// A number of kB from the system's notes on this process: "VmRSS:" or "VmHWM:".
inline long memoryKilobytes(const char* field) {
  std::FILE* status = std::fopen("/proc/self/status", "r");
  if (status == nullptr) return 0;
  char line[256];
  long value = 0;
  while (std::fgets(line, sizeof line, status) != nullptr)
    if (std::strncmp(line, field, std::strlen(field)) == 0)
      std::sscanf(line + std::strlen(field), "%ld", &value);
  std::fclose(status);
  return value;
}

}  // namespace korvenal::bench
