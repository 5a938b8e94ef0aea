#pragma once

#include <functional>
#include <string>
#include <vector>

namespace korvenal::console {

/// How a command, or the program, ended. The values are the program's exit codes.
enum class ExitCode : int {
  Ok = 0,
  Failed = 1,   ///< the command failed, or its run ended with errors
  Usage = 2,    ///< unknown command or wrong arguments
  Stopped = 3,  ///< the person stopped it
};

using Arguments = std::vector<std::string>;

/// One command of the terminal front end.
struct Command {
  static constexpr int Any = 1'000'000;

  std::string name;
  std::string usage;  ///< what follows the name
  std::string help;   ///< one line
  int least = 0;      ///< number of arguments
  int most = 0;
  std::function<ExitCode(const Arguments&)> run;
};

using Commands = std::vector<Command>;

}  // namespace korvenal::console
