#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace korvenal::bench {

inline double secondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Runs a program to its end, its output thrown away.
inline void runProgram(std::vector<std::string> words) {
  const pid_t child = ::fork();
  if (child == 0) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) std::fprintf(stderr, "%s failed\n", words[0].c_str());
}

/// Five rounds of the program that one compares with and the own work, one after the other; prints
/// each round and the median of the ratios, own time by the other's.
inline void compareInPairs(const std::vector<std::string>& program,
                           const std::function<void()>& own) {
  std::array<double, 5> ratios{};
  for (double& ratio : ratios) {
    const double theirs = secondsOf([&] { runProgram(program); });
    const double ours = secondsOf(own);
    ratio = ours / theirs;
    std::printf("%s %.3f s, own %.3f s, ratio %.3f\n", program[0].c_str(), theirs, ours, ratio);
  }
  std::sort(ratios.begin(), ratios.end());
  std::printf("median ratio %.3f\n", ratios[ratios.size() / 2]);
}

}  // namespace korvenal::bench
