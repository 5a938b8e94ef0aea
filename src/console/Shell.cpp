#include "console/Shell.h"

#include <algorithm>

#include "console/CommandLine.h"

namespace korvenal::console {

namespace {

constexpr const char* Prompt = "korvenal> ";
constexpr std::size_t UsageWidth = 42;

std::string usageOf(const Command& command) {
  return command.usage.empty() ? command.name : command.name + " " + command.usage;
}

}  // namespace

Shell::Shell(Screen& screen, Commands commands) : screen_(screen), commands_(std::move(commands)) {}

const Command* Shell::find(const std::string& name) const {
  const auto at = std::find_if(commands_.begin(), commands_.end(),
                               [&](const Command& command) { return command.name == name; });
  return at == commands_.end() ? nullptr : &*at;
}

std::string Shell::commandList() const {
  std::string list;
  for (const Command& command : commands_) {
    std::string usage = "  " + usageOf(command);
    if (usage.size() + 2 > UsageWidth)
      usage += "\n" + std::string(UsageWidth, ' ');
    else
      usage.resize(UsageWidth, ' ');
    list += usage + command.help + "\n";
  }
  return list;
}

ExitCode Shell::usageError(const Command& command) {
  screen_.line("Usage: " + usageOf(command));
  return ExitCode::Usage;
}

ExitCode Shell::runLine(const std::string& line) {
  const CommandLine read = parseCommandLine(line);
  if (!read.error.empty()) {
    screen_.line(read.error);
    return ExitCode::Usage;
  }
  if (read.words.empty()) return ExitCode::Ok;
  const Command* command = find(read.words.front());
  if (command == nullptr) {
    screen_.line("Unknown command: " + read.words.front() + " (\"help\" lists the commands)");
    return ExitCode::Usage;
  }
  const Arguments arguments(read.words.begin() + 1, read.words.end());
  const int count = static_cast<int>(arguments.size());
  if (count < command->least || count > command->most) return usageError(*command);
  if (beforeCommand) beforeCommand();
  ExitCode code = command->run(arguments);
  if (afterCommand) code = afterCommand(code);
  if (code == ExitCode::Usage) return usageError(*command);
  return code;
}

ExitCode Shell::run(LineSource& lines) {
  ExitCode result = ExitCode::Ok;
  std::string line;
  while (true) {
    screen_.flush();
    const LineSource::Got got = lines.read(Prompt, line);
    if (got == LineSource::Got::End) break;
    if (got == LineSource::Got::Interrupted) {
      screen_.line("");
      continue;
    }
    const std::string word = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    if (word == "quit" || word == "exit") break;
    const ExitCode code = runLine(line);
    if (result == ExitCode::Ok) result = code;
    if (code == ExitCode::Stopped && !lines.isAttended()) return ExitCode::Stopped;
  }
  screen_.flush();
  return result;
}

}  // namespace korvenal::console
