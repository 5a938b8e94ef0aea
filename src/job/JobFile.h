#pragma once

#include <string>

#include "core/ActionState.h"
#include "core/Workspace.h"
#include "job/Job.h"
#include "job/NewJob.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Profile.h"

namespace korvenal {

struct JobFileServices {
  ActionState& state;
  Desktop& desktop;
  Files& files;
  const Workspace& workspace;
  Profile& profile;
  NewJob& newJob;
};

/// Saves the job and loads it again. A job file (".jbf") is the data of `vsContents` with its check
/// states; the header row carries product, job name, filters and options (see JobOptions).
class JobFile {
 public:
  JobFile(JobFileServices services, Job& job) : services_(services), job_(job) {}

  /// True when the caller may go on: nothing to save, saved, or not wanted.
  bool doQuerySaveJob();
  /// Loads a job file; an empty path asks for one. True when the job is loaded. A file that cannot
  /// be read or is no job is told, and leaves a new job.
  bool doLoadJob(std::string path);
  /// Asks for a place and saves there. True when saved.
  bool doSaveJob();
  /// Writes the file and makes it the job's own. False: not written, an older file is still whole.
  bool doWriteJobFile(const std::string& path);

  /// The chosen path, or nothing.
  std::string doOpenJobDialog();
  std::string doSaveJobDialog(const std::string& jobName);

 private:
  struct JobText {
    bool unreadable = false;  ///< missing, a folder, or the reading failed
    std::string text;
  };
  JobText readJobText(const std::string& path) const;
  /// Puts the text of a job file into the table, which is left empty when it is none.
  bool doTakeContents(const std::string& text);
  void doTakeHeader(const std::string& path);
  void doTakeItems();
  /// Fills the row with what its item is now; false for one without a usable name.
  bool doTakeItem(int row);
  FileDialog jobDialog() const;
  void doRememberFolder(const std::string& path);
  bool doTellError(const std::string& text, const std::string& title = gProductName);

  JobFileServices services_;
  Job& job_;
};

}  // namespace korvenal
