#include "PairedRounds.h"
#include "PlanBench.h"
#include "platform/linux/LinuxWalker.h"

// Scan and plan of a folder, the index apart, against `find` over it, and the memory of a row.
// Usage: bench_plan FOLDER, a tree of make_tree.

namespace {

using namespace korvenal;

/// Takes no file, so that no index is written.
class ReadOnlyFiles : public LinuxFiles {
 public:
  ReadOnlyFiles() : LinuxFiles(nullptr) {}
  std::unique_ptr<FileWriter> doCreateFile(const std::string&) override { return nullptr; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: bench_plan FOLDER\n", stderr);
    return 2;
  }
  LinuxWalker walker;
  ReadOnlyFiles files;
  bench::PlanBench plan(walker, files, argv[1], "/nonexistent/");
  const long before = bench::memoryKilobytes("VmRSS:");
  plan.scan();  // so that both find the tree in memory
  const long peak = bench::memoryKilobytes("VmHWM:") - before;
  const int rows = plan.plan.vsBuffer.Rows();
  std::printf("%d rows on %d discs, %ld bytes a row at the peak\n", rows, plan.plan.TotalDiscs,
              peak * 1024 / rows);
  bench::compareInPairs({"find", argv[1], "-printf", "%p\\t%s\\t%T@\\n"}, [&] { plan.scan(); });
}
