#pragma once

#include <string>

#include "console/Command.h"
#include "console/LineSource.h"
#include "console/Screen.h"

namespace korvenal::console {

/// Reads commands and runs them, one a line.
class Shell {
 public:
  Shell(Screen& screen, Commands commands);

  /// Runs all lines. A failed command does not keep the next ones from running; a stopped one
  /// ends a script, while a person at the terminal gets the next prompt. The result is that of the
  /// first command that did not end well.
  ExitCode run(LineSource& lines);
  /// Runs one line.
  ExitCode runLine(const std::string& line);
  /// The list of commands, one a line.
  std::string commandList() const;

  std::function<void()> beforeCommand;
  /// Called after each command; a result that is not Ok makes the command one that failed so.
  std::function<ExitCode(ExitCode)> afterCommand;

 private:
  const Command* find(const std::string& name) const;
  ExitCode usageError(const Command& command);

  Screen& screen_;
  Commands commands_;
};

}  // namespace korvenal::console
