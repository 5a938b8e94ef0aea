#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvenal::console {

/// A command line taken apart.
struct CommandLine {
  std::vector<std::string> words;  ///< empty for a blank line or a comment
  std::string error;               ///< why the line cannot be read; empty when it can
};

/// Takes a line apart by the quoting rules of a shell: blanks separate words, '...' keeps all as
/// it is, "..." keeps all but \" and \\, a backslash outside of quotes keeps the next character,
/// and a '#' that begins a word begins a comment. Nothing is ever expanded.
CommandLine parseCommandLine(std::string_view line);

}  // namespace korvenal::console
