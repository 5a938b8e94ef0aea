#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>
#include <vector>

namespace korvenal::console {

/// A program at work whose input and output are pipes of the test.
class PipedProgram {
 public:
  explicit PipedProgram(std::vector<std::string> words) {
    int in[2], out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) return;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      std::signal(SIGPIPE, SIG_DFL);
      std::signal(SIGHUP, SIG_DFL);
      execvp(arguments[0], arguments.data());
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    in_ = in[1];
    out_ = out[0];
  }
  ~PipedProgram() {
    if (child_ > 0) kill(child_, SIGKILL);
    end();
  }
  PipedProgram(const PipedProgram&) = delete;
  PipedProgram& operator=(const PipedProgram&) = delete;

  void say(std::string_view line) const {
    [[maybe_unused]] const ssize_t written = write(in_, line.data(), line.size());
  }
  /// Reads on until the text has come; false when the program ends without it.
  bool waitFor(std::string_view text) {
    char piece[4096];
    while (said_.find(text) == std::string::npos) {
      const ssize_t got = read(out_, piece, sizeof piece);
      if (got <= 0) return false;
      said_.append(piece, static_cast<std::size_t>(got));
    }
    return true;
  }
  void closeOutput() { shut(out_); }
  void signal(int number) const { kill(child_, number); }
  /// Ends its input and waits. Its exit code, or the negative number of the signal that ended it.
  int end() {
    shut(in_);
    while (out_ >= 0 && !waitFor({"\0\0", 2})) shut(out_);
    if (child_ <= 0) return -1;
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  const std::string& said() const { return said_; }

 private:
  static void shut(int& end) {
    if (end >= 0) close(end);
    end = -1;
  }

  pid_t child_ = -1;
  int in_ = -1, out_ = -1;
  std::string said_;
};

}  // namespace korvenal::console
