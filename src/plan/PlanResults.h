#pragma once

#include "plan/Plan.h"

namespace korvenal {

/// Counts the files and split files of an allocated plan into its totals (row 1, the index, is not
/// counted) and completes the split files' own rows: number of pieces, first and last disc.
void countPlan(Plan& plan);

/// Removes folder rows, made or repeated, that have nothing of theirs below them on the same disc.
/// What they cost stays counted.
void doRemoveEmptyFolders(PlanTable& table);

}  // namespace korvenal
