#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/frmMain.h"
#include "console/Answers.h"
#include "console/Command.h"
#include "console/ConsoleDesktop.h"
#include "console/Screen.h"

namespace korvenal::console {

/// What commands work with. All of it outlives them.
struct Session {
  frmMain& main;
  ConsoleDesktop& desktop;
  Screen& screen;
  Answers& answers;
  Files& files;
  ImageTrays& trays;
  BurnEngine& engine;
  MountedDevices& devices;
  const Clock& clock;

  ExitCode fail(std::string_view text) const {
    screen.line(text);
    return ExitCode::Failed;
  }

  /// Leads back to the step where the job can be changed. False, told, while an action is at work.
  bool beginEdit() const;
  /// The row of the job's item with this name on disc; 0, told, for none.
  int findItem(const std::string& name) const;
};

/// A whole number without anything around it, within the range.
std::optional<int> parseNumber(const std::string& text, int least, int most);
/// "1" or "0".
std::optional<bool> parseFlag(const std::string& text);

/// Arguments split into options with a value ("--tsv FILE"), options without, and the rest.
struct Options {
  std::map<std::string, std::string> values;
  Arguments rest;
  bool valid = true;  ///< false: an unknown option, or one without its value

  bool has(const std::string& option) const { return values.contains(option); }
};
Options parseOptions(const Arguments& arguments, const Arguments& withValue,
                     const Arguments& withoutValue = {});

}  // namespace korvenal::console
