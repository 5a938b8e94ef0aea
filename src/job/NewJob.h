#pragma once

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/Settings.h"
#include "device/DriveDiscovery.h"
#include "job/Job.h"

namespace korvenal {

/// Makes the job a new one. The default options reach a job here and nowhere else.
class NewJob {
 public:
  NewJob(ActionState& state, const Settings& settings, DriveDiscovery& drives, RunGrids& grids,
         Job& job)
      : state_(state), settings_(settings), drives_(drives), grids_(grids), job_(job) {}

  /// An empty job named "New Backup". Whether the one before is to be saved was asked before.
  void doNewJob();
  /// No items, the options of a new job, empty result grids. The job's name stays.
  void doNewJobValues();
  /// The disc type that a new job for the drives chosen has.
  void doTakeDiscType();

 private:
  ActionState& state_;
  const Settings& settings_;
  DriveDiscovery& drives_;
  RunGrids& grids_;
  Job& job_;
};

}  // namespace korvenal
