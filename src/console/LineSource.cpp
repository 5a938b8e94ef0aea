#include "console/LineSource.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/Text.h"

namespace korvenal::console {

LineSource::Got StreamLines::read(const std::string&, std::string& line) {
  if (!std::getline(in_, line)) return Got::End;
  if (first_ && Text::startsWith(line, "\xEF\xBB\xBF")) line.erase(0, 3);
  first_ = false;
  return Got::Line;
}

DescriptorLines::DescriptorLines(int descriptor)
    : descriptor_(descriptor), terminal_(isatty(descriptor) == 1) {}

LineSource::Got DescriptorLines::read(const std::string& prompt, std::string& line) {
  if (terminal_) {
    std::fputs(prompt.c_str(), stdout);
    std::fflush(stdout);
  }
  std::array<char, 4096> buffer{};
  while (true) {
    const std::size_t end = pending_.find('\n');
    if (end != std::string::npos || (ended_ && !pending_.empty())) {
      line = pending_.substr(0, end);
      pending_.erase(0, end == std::string::npos ? end : end + 1);
      return Got::Line;
    }
    if (ended_) return Got::End;
    const ssize_t got = ::read(descriptor_, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) return Got::Interrupted;
    if (got <= 0)
      ended_ = true;
    else
      pending_.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

}  // namespace korvenal::console
