// Burning, verifying and restoring on an image disc beside common tools, in paired rounds.
//
//   bench_burn FOLDER [FILES] [MEAN_BYTES] [ROUNDS]
//
// makes FILES source files below FOLDER when they are not there, then prints the median of the
// ratios of each round: ours divided by the other tool's time.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/Paths.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/LinuxTargetFolder.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/engine/Engine.h"
#include "platform/linux/engine/EngineDiscFiles.h"
#include "platform/linux/engine/ImageShelf.h"

namespace {

using namespace korvenal;
namespace fs = std::filesystem;

struct Measured {
  double seconds = 0;
  double cpu = 0;  ///< seconds of work: on a busy machine the fairer measure
  long peakKiB = 0;
  bool well = false;
};

/// Runs the work in a process of its own, so that its memory is its own as well.
Measured inChild(const std::function<bool()>& work) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work() ? 0 : 1);
  int status = 0;
  struct rusage usage {};
  ::wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  const auto secondsOf = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return {time.count(), secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime), usage.ru_maxrss,
          WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

Measured program(std::vector<std::string> words) {
  return inChild([&words] {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int nothing = ::open("/dev/null", O_WRONLY);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    ::execvp(arguments[0], arguments.data());
    return false;
  });
}

/// Everything that the program ties together for its image drives.
struct Station {
  explicit Station(const std::string& shelfFolder)
      : shelf(files, {shelfFolder, 1, false}), engine(clock, shelf.drives(), calls), discs(engine) {
    engine.do_SelectDeviceByLetter('V');
  }
  LinuxFiles files{nullptr};
  SystemClock clock;
  ImageShelf shelf;
  SlowCalls calls;
  Engine engine;
  EngineDiscFiles discs;
};

std::vector<std::string> filesBelow(const std::string& folder) {
  std::vector<std::string> found;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) found.push_back(entry.path().string());
  std::sort(found.begin(), found.end());
  return found;
}

std::string discPathOf(const std::string& path, const std::string& root) {
  std::string disc = path.substr(root.size());
  std::replace(disc.begin(), disc.end(), '/', '\\');
  return disc;
}

void makeSources(const std::string& root, int count, std::int64_t meanBytes) {
  if (fs::exists(root)) return;
  std::mt19937_64 random(1);
  std::string content(static_cast<std::size_t>(meanBytes) * 2, '\0');
  for (char& c : content) c = static_cast<char>(random());
  for (int i = 0; i < count; ++i) {
    const std::string folder = root + std::to_string(i / 2500) + "/" + std::to_string(i / 100 % 25);
    fs::create_directories(folder);
    std::ofstream out(folder + "/file " + std::to_string(i) + ".bin", std::ios::binary);
    const auto bytes = count < 100 ? static_cast<std::uint64_t>(meanBytes)
                                   : random() % static_cast<std::uint64_t>(meanBytes * 2);
    out.write(content.data(), static_cast<std::streamsize>(bytes));
  }
}

bool burnOwn(const std::string& shelf, const std::string& root,
             const std::vector<std::string>& all) {
  Station station(shelf);
  if (!station.shelf.insertBlank('V', DiscDvdPlusRDl, "bench", 20'000'000)) return false;
  Engine& engine = station.engine;
  for (const std::string& path : all) {
    const std::string disc = discPathOf(path, root);
    const std::string parent(Paths::doGetFolderPart("\\" + disc));
    engine.do_InsertFileWithName(parent, path, std::string(Paths::doGetFilePart(disc)), "", 0, 0, 0,
                                 0);
  }
  if (engine.do_Prepare({}) <= 0) return false;
  bool done = false;
  std::int32_t error = -1;
  const auto finished = [&](std::int32_t code, std::int32_t) {
    error = code;
    done = true;
  };
  if (engine.do_Burn(finished, {}, 0, "") == 0) return false;
  while (!done) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    engine.do_Deliver();
  }
  return error == 0 && engine.do_GetSkippedFiles().empty();
}

bool verify(const std::string& shelf, const std::string& root,
            const std::vector<std::string>& all) {
  Station station(shelf);
  for (const std::string& path : all)
    if (station.discs.doGetInfo('V', discPathOf(path, root)).kind != FileInfo::Kind::File)
      return false;
  return true;
}

bool restore(const std::string& shelf, const std::string& root, const std::string& target,
             const std::vector<std::string>& all) {
  Station station(shelf);
  fs::create_directories(target);
  const auto folder = LinuxTargetFolders(&station.discs).open(target);
  return folder && std::all_of(all.begin(), all.end(), [&](const std::string& path) {
           const std::string disc = discPathOf(path, root);
           return static_cast<bool>(
               folder->doCopyFileProgress(Paths::onDrive('V', disc), disc, {}));
         });
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// Our time and work divided by the other's, one a round.
struct Ratios {
  std::vector<double> time;
  std::vector<double> cpu;
  void add(const Measured& ours, const Measured& theirs) {
    time.push_back(ours.seconds / theirs.seconds);
    cpu.push_back(ours.cpu / theirs.cpu);
  }
  void print(const char* what) const {
    std::printf("%-18s  %.2f  %.2f\n", what, median(time), median(cpu));
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench_burn FOLDER [FILES] [MEAN_BYTES] [ROUNDS]\n");
    return 2;
  }
  const std::string base = Paths::withEnd(argv[1]);
  const int count = argc > 2 ? std::atoi(argv[2]) : 50'000;
  const std::int64_t meanBytes = argc > 3 ? std::atoll(argv[3]) : 25'770;
  const int rounds = argc > 4 ? std::atoi(argv[4]) : 5;
  const std::string root = base + "source/";
  const std::string shelf = base + "shelf/";
  const std::string other = base + "other.iso";
  const std::string target = base + "target/";
  makeSources(root, count, meanBytes);
  const auto all = filesBelow(root);

  Ratios burns, verifies, restores, copies;
  long peak = 0;
  for (int round = 0; round < rounds; ++round) {
    fs::remove_all(shelf);
    fs::remove(other);
    ::sync();
    const Measured ours = inChild([&] { return burnOwn(shelf, root, all); });
    ::sync();
    const Measured theirs =
        program({"xorriso", "-outdev", "stdio:" + other, "-joliet", "on", "-map", root, "/"});
    fs::remove(other);
    const std::string image = shelf + "bench.iso";
    const Measured look = inChild([&] { return verify(shelf, root, all); });
    const Measured list = program({"bsdtar", "-tvf", image});
    fs::remove_all(target);
    ::sync();
    const Measured back = inChild([&] { return restore(shelf, root, target, all); });
    fs::remove_all(target);
    ::sync();
    const Measured extract =
        program({"xorriso", "-osirrox", "on", "-indev", "stdio:" + image, "-extract", "/", target});
    fs::remove_all(target);
    ::sync();
    const Measured copy = program({"cp", "-r", root, target});
    fs::remove_all(target);
    if (!ours.well || !look.well || !back.well) {
      std::fprintf(stderr, "our work failed: burn %d, verify %d, restore %d\n", ours.well,
                   look.well, back.well);
      return 1;
    }
    peak = std::max(peak, ours.peakKiB);
    burns.add(ours, theirs);
    verifies.add(look, list);
    restores.add(back, extract);
    copies.add(back, copy);
    std::printf(
        "burn %.2f s : xorriso %.2f s   verify %.3f s : bsdtar %.3f s   "
        "restore %.2f s : xorriso %.2f s : cp %.2f s\n",
        ours.seconds, theirs.seconds, look.seconds, list.seconds, back.seconds, extract.seconds,
        copy.seconds);
  }
  std::printf("                    time  cpu\n");
  burns.print("burn / xorriso");
  verifies.print("verify / bsdtar");
  restores.print("restore / xorriso");
  copies.print("restore / cp");
  std::printf("peak memory of the burn: %ld MiB\n", peak / 1024);
  fs::remove_all(shelf);
  return 0;
}
