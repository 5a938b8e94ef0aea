#include "console/Screen.h"

#include "platform/Text.h"

namespace korvenal::console {

namespace {

/// Columns that a progress line takes at most, so that it never wraps on a usual terminal.
constexpr std::size_t ProgressBytes = 78;
constexpr std::string_view WipeLine = "\r\x1b[K";
constexpr std::string_view Red = "\x1b[31m";
constexpr std::string_view PlainAgain = "\x1b[0m";

}  // namespace

void Screen::line(std::string_view text) {
  wipeProgress();
  for (const std::string& part : Text::split(text, '\n')) out_ << Text::escaped(part) << '\n';
}

void Screen::warning(std::string_view text) {
  if (terminal_) raw(Red);
  line(text);
  if (terminal_) raw(PlainAgain);
}

void Screen::raw(std::string_view text) {
  wipeProgress();
  out_ << text;
}

void Screen::progress(std::string_view text) {
  if (!terminal_) return;
  const std::string line(Text::firstBytes(Text::escaped(text), ProgressBytes));
  if (line == shown_) return;
  out_ << WipeLine << line;
  shown_ = line;
  out_.flush();
}

void Screen::flush() {
  wipeProgress();
  out_.flush();
}

void Screen::wipeProgress() {
  if (shown_.empty()) return;
  out_ << WipeLine;
  shown_.clear();
}

}  // namespace korvenal::console
