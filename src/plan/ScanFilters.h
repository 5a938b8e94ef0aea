#pragma once

#include <optional>

#include "job/Job.h"
#include "platform/Clock.h"
#include "platform/Walker.h"

namespace korvenal {

/// The earliest date that a job's date filter lets through: the same time of day, so many days
/// before `now`. Nothing when the filter is off.
std::optional<UnixTime> earliestDateOf(const Job& job, UnixTime now);
/// The filters of a job as a walk takes them.
WalkFilters filtersOf(const Job& job, UnixTime now);

}  // namespace korvenal
