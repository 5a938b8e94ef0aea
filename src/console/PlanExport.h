#pragma once

#include <string>

#include "core/ActionState.h"
#include "plan/Plan.h"
#include "platform/Files.h"

namespace korvenal::console {

/// Writes the plan to a file: one line per row of `vsBuffer` from row 1, its 13 columns as text,
/// separated by tabs.
FileOutcome writePlanRows(Files& files, const std::string& path, const Plan& plan);

/// The results of the plan as a JSON object: `TotalDiscs`, `TotalFiles`, `TotalSplits`,
/// `TotalSize`, `DiscUsed` (bytes, one number a disc), `IndexSizePreliminary`, `IndexSizeFinal`
/// (bytes), `RunStamp`, `StopAction`, `LimitExceeded`.
std::string planSummary(const Plan& plan, const ActionState& state);

/// The text as a JSON string with its quotes.
std::string jsonString(std::string_view text);

}  // namespace korvenal::console
