#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace korvenal::console {

/// What a person sees: lines that stay, and below them one progress line that is painted over and
/// only shown on a terminal.
class Screen {
 public:
  Screen(std::ostream& out, bool isTerminal) : out_(out), terminal_(isTerminal) {}

  bool isTerminal() const { return terminal_; }
  /// Prints a line. Line feeds in it begin new lines; other control characters are shown escaped.
  void line(std::string_view text);
  /// A line that must not be overlooked: red on a terminal.
  void warning(std::string_view text);
  /// Prints text of our own as it stands (tables, help), with its own line ends.
  void raw(std::string_view text);
  /// Paints the progress line; an empty text removes it.
  void progress(std::string_view text);
  void flush();

 private:
  void wipeProgress();

  std::ostream& out_;
  bool terminal_;
  std::string shown_;  ///< the progress line on the screen
};

}  // namespace korvenal::console
