#include "plan/ScanFilters.h"

#include <algorithm>
#include <chrono>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t MostDays = 100'000;  ///< beyond it no file can lie

std::vector<std::string> patternsOf(const std::string& list) {
  std::vector<std::string> patterns;
  for (const std::string& part : Text::split(list, ';'))
    if (const std::string_view pattern = Text::trim(part); !pattern.empty())
      patterns.emplace_back(pattern);
  return patterns;
}

std::uint32_t excludedAttributes(const Job& job) {
  static constexpr std::uint32_t ByBox[] = {AttributeReadOnly, AttributeHidden, AttributeSystem,
                                            AttributeCompressed};
  std::uint32_t excluded = AttributeVolumeLabel | AttributeDevice;
  for (std::size_t box = 0; box < job.chkAttribute.size(); ++box)
    if (!job.chkAttribute[box]) excluded |= ByBox[box];
  return excluded;
}

}  // namespace

std::optional<UnixTime> earliestDateOf(const Job& job, UnixTime now) {
  using namespace std::chrono;
  const std::int64_t days = std::min(Text::toInteger(job.txDateFilter), MostDays);
  if (days <= 0) return std::nullopt;
  // By the calendar, not by seconds: the time of day stays over a change of the clocks.
  const Dates::Fields f = Dates::fieldsOf(now);
  const sys_days today =
      year{f.year} / month{static_cast<unsigned>(f.month)} / day{static_cast<unsigned>(f.day)};
  const year_month_day date{today - std::chrono::days{days}};
  return Dates::fromDigits(Text::zeroPadded(static_cast<int>(date.year()), 4) +
                           Text::zeroPadded(static_cast<unsigned>(date.month()), 2) +
                           Text::zeroPadded(static_cast<unsigned>(date.day()), 2) +
                           Dates::digits(now).substr(8));
}

WalkFilters filtersOf(const Job& job, UnixTime now) {
  WalkFilters filters;
  filters.include = patternsOf(job.comboInclude);
  if (filters.include.empty()) filters.include = {"*"};
  filters.exclude = patternsOf(job.comboExclude);
  filters.earliest = earliestDateOf(job, now);
  filters.excludeAttributes = excludedAttributes(job);
  return filters;
}

}  // namespace korvenal
