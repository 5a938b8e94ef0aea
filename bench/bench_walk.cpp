#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

#include "platform/linux/LinuxWalker.h"

// The walk against `find -printf '%p\t%s\t%T@\n'` over one tree, in paired rounds; prints the
// median ratio. Usage: bench_walk FOLDER, a tree of make_tree.

namespace {

using namespace korvenal;

constexpr int Rounds = 5;

/// Takes of each entry what a plan takes: path, size and time.
class CountingSink : public WalkSink {
 public:
  void enterFolder(const WalkEntry&) override { ++entries; }
  bool report(const WalkEntry& entry) override {
    path.assign(entry.folder).append(entry.name);
    if (!entry.isFolder) ++entries;
    sum += entry.size + entry.modified + static_cast<std::int64_t>(path.size());
    return true;
  }
  bool skipped(WalkSkip, const std::string&) override { return true; }

  std::int64_t entries = 0;
  std::int64_t sum = 0;
  std::string path;
};

template <typename Work>
double secondsOf(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void runFind(const char* folder) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    ::execlp("find", "find", folder, "-printf", "%p\\t%s\\t%T@\\n", static_cast<char*>(nullptr));
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) std::fputs("find failed\n", stderr);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: bench_walk FOLDER\n", stderr);
    return 2;
  }
  LinuxWalker walker;
  CountingSink sink;
  const auto walk = [&] {
    sink.entries = 0;
    walker.walk(argv[1], true, {}, sink);
  };
  walk();  // so that both find the tree in memory
  std::array<double, Rounds> ratios{};
  for (double& ratio : ratios) {
    const double find = secondsOf([&] { runFind(argv[1]); });
    const double ours = secondsOf(walk);
    ratio = ours / find;
    std::printf("find %.3f s, walk %.3f s, ratio %.3f\n", find, ours, ratio);
  }
  std::sort(ratios.begin(), ratios.end());
  std::printf("%lld entries, median ratio %.3f\n", static_cast<long long>(sink.entries),
              ratios[Rounds / 2]);
}
