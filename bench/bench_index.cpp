#include <filesystem>

#include "PairedRounds.h"
#include "PlanBench.h"
#include "plan/BackupIndex.h"

// The index of a million rows: written and packed against `zip -9 -P x` of the same text, and
// unpacked against `unzip -P`. Usage: bench_index.

namespace {

using namespace korvenal;
namespace fs = std::filesystem;

constexpr int Folders = 50'000;
constexpr int FilesPerFolder = 18;
constexpr int Depth = 12;

/// Reports folders in chains of twelve, with files that look like those of people.
class GeneratedWalker : public Walker {
 public:
  void walk(const std::string& folder, bool, const WalkFilters&, WalkSink& sink) override {
    for (int chain = 0; chain * Depth < Folders; ++chain) walkLevel(chain, 1, folder + "/", sink);
  }
  void walkFile(const std::string&, const WalkFilters&, WalkSink&) override {}

 private:
  void walkLevel(int chain, int level, const std::string& path, WalkSink& sink) {
    const std::string name = "Folder " + std::to_string(chain) + " level " + std::to_string(level);
    const WalkEntry folder{.name = name, .folder = path, .isFolder = true};
    sink.enterFolder(folder);
    const std::string below = path + name + "/";
    for (int file = 0; file < FilesPerFolder; ++file) {
      seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
      const auto number = static_cast<std::uint32_t>(seed_ >> 33);
      const std::string fileName = "IMG_" + std::to_string(number % 100'000) + ".jpg";
      sink.report({.name = fileName,
                   .folder = below,
                   .size = number % 10'000,
                   .modified = 1'400'000'000 + number % 300'000'000});
    }
    if (level < Depth) walkLevel(chain, level + 1, below, sink);
    sink.report(folder);
  }

  std::uint64_t seed_ = 1;
};

}  // namespace

int main() {
  std::string temporary = (fs::temp_directory_path() / "korvenal-bench-XXXXXX").string();
  if (::mkdtemp(temporary.data()) == nullptr) return 1;
  temporary += "/";
  GeneratedWalker walker;
  LinuxFiles files(nullptr);
  bench::PlanBench bench(walker, files, "/", temporary);
  bench.scan();
  const std::string text = temporary + "text", zip = temporary + "text.zip";
  if (bench.archive.extract(bench.plan.IndexTempPath, text, IndexPassword, 1LL << 40, [] {}) != 0)
    return 1;

  BackupIndex index(files, bench.archive, bench.desktop, bench.state);
  const BackupIndex::Header header{"Bench", ""};
  bench::compareInPairs({"zip", "-9", "-q", "-P", "x", "-j", zip, text},
                        [&] { index.doWriteBackupIndex(bench.plan, &header); });
  std::printf("%d rows, text %ju bytes, zip %ju bytes, own %s bytes\n", bench.plan.vsBuffer.Rows(),
              fs::file_size(text), fs::file_size(zip),
              files.doGetFileSize(bench.plan.IndexTempPath).toText().c_str());
  bench::compareInPairs({"unzip", "-qq", "-o", "-P", "x", "-d", temporary + "unzipped", zip}, [&] {
    bench.archive.extract(bench.plan.IndexTempPath, text, IndexPassword, 1LL << 40, [] {});
  });
  fs::remove_all(temporary);
}
