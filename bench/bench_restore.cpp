#include <filesystem>

#include "PairedRounds.h"
#include "PlanBench.h"
#include "SampleIndex.h"
#include "restore/IndexOpening.h"
#include "restore/RestoreFind.h"

// A million rows of an index: unpacked and opened against `unzip -P` of the same archive, then
// selected and searched. Usage: bench_restore.

namespace {

using namespace korvenal;
namespace fs = std::filesystem;

void printMilliseconds(const char* what, const std::function<void()>& work) {
  std::printf("%s %.1f ms\n", what, bench::secondsOf(work) * 1000);
}

}  // namespace

int main() {
  std::string temporary = (fs::temp_directory_path() / "korvenal-bench-XXXXXX").string();
  if (::mkdtemp(temporary.data()) == nullptr) return 1;
  temporary += "/";
  const std::string text = temporary + "text", zip = temporary + "zip";
  bench::writeSampleIndex(text);

  bench::EmptyDesktop desktop;
  LinuxFiles files(nullptr);
  ZipIndexArchive archive(files);
  Profile profile(files, temporary + "settings");
  Settings settings(profile);
  ActionState state;
  DeviceSettings devices;
  Workspace workspace = Workspace::below(temporary, temporary, temporary);
  workspace.TempFolder = temporary;
  RestorePage page(desktop);
  page.txRestoreTo = temporary;
  RestoreSelection selection(page, desktop);
  RestoreFind find(page, desktop);
  IndexOpening opening({state, desktop, files, archive, settings, devices, workspace}, page,
                       selection, {});
  if (archive.compress(zip, text, IndexPassword, {}) != 0) return 1;

  bench::compareInPairs({"unzip", "-qq", "-o", "-P", IndexPassword, "-d", temporary + "out", zip},
                        [&] { opening.doOpenIndexFile(zip); });
  const RestoreTree& tree = page.vsRestore;
  std::printf("%d rows, %zu bytes a row\n", tree.Rows(),
              tree.memoryBytes() / static_cast<std::size_t>(tree.Rows()));
  printMilliseconds("check at the root", [&] { selection.doClickRow(1); });
  printMilliseconds("uncheck a leaf", [&] { selection.doClickRow(tree.Rows() - 1); });
  printMilliseconds("select all", [&] { selection.doSelectAllRows(); });
  printMilliseconds("invert", [&] { selection.pbInvertSelection(); });
  printMilliseconds("find", [&] { find.doFindString("nowhere to be found", false); });
  printMilliseconds("find from a common beginning", [&] { find.doFindString("img_x", false); });
  printMilliseconds("find with case", [&] { find.doFindString("nowhere to be found", true); });

  // The same number of names beyond ASCII.
  IndexText words;
  std::string lines = "KORVEN2.0-UTF8\tBench\t1\t1\t0\t20240229134501\t\t\t\t1\r\n";
  for (int i = 0; i < 1'000'000; ++i)
    lines += "2\t\u0424\u043e\u0442\u043e\u0433\u0440\u0430\u0444\u0438\u044f " +
             std::to_string(i) + ".jpg\t\t1\t2\t20240229134501\t\t\t\t1\r\n";
  if (!words.load(std::move(lines))) return 1;
  fillRestoreTree(words, page.vsRestore, [](int, int) {});
  printMilliseconds("find among Cyrillic names", [&] {
    find.doFindString("\u0444\u043e\u0442\u043e\u0448\u043e\u043f", false);
  });
  fs::remove_all(temporary);
}
