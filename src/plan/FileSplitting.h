#pragma once

#include "core/ActionState.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Turns a file's row into the row of a split file: on disc a folder named like the file.
void makeSplitFile(PlanTable& table, PlanTable::Row& file);

/// A piece of a split file: bytes `range.start` to `range.end`, 1-based and inclusive.
PlanTable::Row pieceOf(PlanTable& table, const PlanTable::Row& splitFile,
                       const PlanTable::Range& range);

/// Cuts files that are too large for the Joliet file system of a DVD. False on a stop.
bool cutForJoliet(const ActionState& state, Desktop& desktop, const Job& job, PlanTable& table);

}  // namespace korvenal
