#pragma once

#include <istream>
#include <string>

namespace korvenal::console {

/// Where lines come from: a command file, a pipe or a person at a terminal.
class LineSource {
 public:
  enum class Got {
    Line,
    End,         ///< no more lines
    Interrupted  ///< the person pressed the interrupt key instead
  };
  virtual ~LineSource() = default;
  /// Shows the prompt where a person would see it and reads the next line, without its end.
  virtual Got read(const std::string& prompt, std::string& line) = 0;
  /// True when a person can be asked.
  virtual bool isAttended() const = 0;
};

/// Lines of a stream, with nobody to ask. A byte order mark at its start is passed over.
class StreamLines : public LineSource {
 public:
  explicit StreamLines(std::istream& in) : in_(in) {}
  Got read(const std::string& prompt, std::string& line) override;
  bool isAttended() const override { return false; }

 private:
  std::istream& in_;
  bool first_ = true;
};

/// Lines of a file descriptor, which the caller keeps open. A person is asked there when it is
/// a terminal. The interrupt key ends a wait for a line, so its handler must not restart reads.
class DescriptorLines : public LineSource {
 public:
  explicit DescriptorLines(int descriptor);
  Got read(const std::string& prompt, std::string& line) override;
  bool isAttended() const override { return terminal_; }

 private:
  int descriptor_;
  bool terminal_;
  bool ended_ = false;
  std::string pending_;  ///< bytes read behind the last line
};

}  // namespace korvenal::console
