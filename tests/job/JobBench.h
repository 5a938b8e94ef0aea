#pragma once

#include "device/DeviceBench.h"
#include "job/AddItems.h"
#include "job/JobControls.h"
#include "job/JobFile.h"
#include "job/NewJob.h"

namespace korvenal::test {

/// A job with all that makes, edits and stores it.
struct JobBench : DeviceBench {
  Job job;
  NewJob newJob{state, settings, drives, grids, job};
  JobFile jobFile{{.state = state,
                   .desktop = desktop,
                   .files = files,
                   .workspace = workspace,
                   .profile = profile,
                   .newJob = newJob},
                  job};
  AddItems addItems{{.state = state,
                     .desktop = desktop,
                     .files = files,
                     .workspace = workspace,
                     .profile = profile},
                    job};
  JobControls controls{state, drives, job};

  JobBench() { newJob.doNewJob(); }

  void add(const std::string& name, const std::string& path, int type = 1) {
    addItems.doCreateItem(type, name, path);
  }
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (int row = 1; row < job.vsContents.Rows(); ++row)
      found.push_back(job.vsContents.text(row, ContentsName));
    return found;
  }
  const std::string& cell(int row, int col) const { return job.vsContents.text(row, col); }
};

}  // namespace korvenal::test
