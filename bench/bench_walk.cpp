#include <cstdio>
#include <string>

#include "PairedRounds.h"
#include "platform/linux/LinuxWalker.h"

// The walk against `find -printf '%p\t%s\t%T@\n'` over one tree, in paired rounds; prints the
// median ratio. Usage: bench_walk FOLDER, a tree of make_tree.

namespace {

using namespace korvenal;

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
  bench::compareInPairs({"find", argv[1], "-printf", "%p\\t%s\\t%T@\\n"}, walk);
  std::printf("%lld entries\n", static_cast<long long>(sink.entries));
}
