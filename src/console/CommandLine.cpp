#include "console/CommandLine.h"

namespace korvenal::console {

namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

/// Reads one line from left to right.
class Reader {
 public:
  explicit Reader(std::string_view line) : line_(line) {}

  CommandLine read() {
    CommandLine result;
    while (true) {
      while (at_ < line_.size() && isBlank(line_[at_])) ++at_;
      if (at_ == line_.size() || line_[at_] == '#') return result;
      result.words.push_back(readWord());
      if (!error_.empty()) return {{}, error_};
    }
  }

 private:
  std::string readWord() {
    std::string word;
    while (at_ < line_.size() && !isBlank(line_[at_]) && error_.empty()) {
      const char c = line_[at_++];
      if (c == '\'') {
        readSingleQuoted(word);
      } else if (c == '"') {
        readDoubleQuoted(word);
      } else if (c == '\\') {
        if (at_ == line_.size())
          error_ = "A backslash ends the line.";
        else
          word += line_[at_++];
      } else {
        word += c;
      }
    }
    return word;
  }

  void readSingleQuoted(std::string& word) {
    const std::size_t end = line_.find('\'', at_);
    if (end == std::string_view::npos) {
      error_ = "A quote ' is not closed.";
      return;
    }
    word += line_.substr(at_, end - at_);
    at_ = end + 1;
  }

  void readDoubleQuoted(std::string& word) {
    while (at_ < line_.size()) {
      char c = line_[at_++];
      if (c == '"') return;
      const bool escape =
          c == '\\' && at_ < line_.size() && (line_[at_] == '"' || line_[at_] == '\\');
      if (escape) c = line_[at_++];
      word += c;
    }
    error_ = "A quote \" is not closed.";
  }

  std::string_view line_;
  std::size_t at_ = 0;
  std::string error_;
};

}  // namespace

CommandLine parseCommandLine(std::string_view line) {
  return Reader(line).read();
}

}  // namespace korvenal::console
