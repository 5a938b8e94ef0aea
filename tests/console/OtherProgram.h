#pragma once

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

namespace korvenal::console {

inline constexpr int Never = -1;

/// Runs a program with its output in a file; it is killed when it is still at work after so many
/// milliseconds. Its exit code, or the negative number of the signal that ended it.
inline int runProgram(std::vector<std::string> words, const std::string& output,
                      int killAfter = Never) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  int alive[2];
  if (pipe(alive) != 0) return -1;
  fflush(stdout);  // or the child would print it as well
  const pid_t child = fork();
  if (child == 0) {
    if (freopen(output.c_str(), "w", stdout) != nullptr) execvp(arguments[0], arguments.data());
    _exit(127);
  }
  close(alive[1]);
  // The pipe hangs up when the child ends: a wait for that, with an end.
  pollfd end{.fd = alive[0], .events = 0, .revents = 0};
  if (poll(&end, 1, killAfter) == 0) kill(child, SIGKILL);
  close(alive[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace korvenal::console
