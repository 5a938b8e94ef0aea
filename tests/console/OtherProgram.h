#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

namespace korvenal::console {

/// Runs a program with its output in a file. Its exit code, or the negative number of the signal
/// that ended it.
inline int runProgram(std::vector<std::string> words, const std::string& output) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  fflush(stdout);  // or the child would print it as well
  const pid_t child = fork();
  if (child == 0) {
    if (freopen(output.c_str(), "w", stdout) != nullptr) execvp(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace korvenal::console
