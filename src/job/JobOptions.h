#pragma once

#include <string>
#include <string_view>

#include "job/Job.h"

namespace korvenal {

/// The options of a job as its file holds them: 13 fields of ten characters, decimal numbers with
/// leading zeros, but for the third, whose first four digits are the attribute boxes:
///
///   backup type, days of the date filter, attribute boxes, disc type, finalize disc, auto erase,
///   file size in MB, disc size in MB, skip error, file system, backup index, split and span,
///   restore kit
///
/// Files of older versions end after the ninth field; what is missing reads as zeros.
inline constexpr std::size_t OptionTextLength = 130;
inline constexpr std::size_t ShortestOptionText = 90;

std::string buildOptionText(const Job& job);
/// Sets the options of the job; a value out of its range becomes the one that the range tells.
void applyOptionText(Job& job, std::string_view text);

}  // namespace korvenal
