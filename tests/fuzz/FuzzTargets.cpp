#include "fuzz/FuzzTargets.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "job/JobBench.h"
#include "platform/linux/ZipIndexArchive.h"
#include "platform/linux/engine/DiscLibraries.h"
#include "platform/linux/engine/DiscReader.h"
#include "platform/linux/engine/IsoLayout.h"
#include "restore/IndexFilling.h"
#include "restore/RestoreSelection.h"
#include "support/ManualClock.h"

namespace korvenal::test {

namespace {

void require(bool kept) {
  if (!kept) std::abort();
}

void requireSoundRow(const RestoreTree& tree, int row) {
  const RestoreTree::Item& item = tree.item(row);
  require(static_cast<int>(item.parent) < row);
  require(static_cast<int>(item.end) > row && static_cast<int>(item.end) <= tree.Rows());
  require(item.firstDisc >= 1 && item.firstDisc <= item.lastDisc);
  require(item.lastDisc <= RestoreTree::MaxDisc && item.knownParts <= item.parts);
  require(tree.name(row).find_first_of("\n\t\\") == std::string_view::npos);
  for (int column = 0; column < RestoreColumns; ++column) {
    tree.text(row, column);
    tree.cellData(row, column);
  }
  if (item.knownParts > 0) require(tree.partDisc(row, static_cast<int>(item.knownParts)) >= 1);
}

/// A disc of which only the first half of each block is told.
class SparseBlocks : public BlockReader {
 public:
  static constexpr std::size_t BytesTold = 1024;
  static constexpr std::uint32_t FirstTold = 16;

  explicit SparseBlocks(std::string_view told) : told_(told) {}

  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override {
    const std::size_t end = FirstTold + told_.size() / BytesTold + 1;
    if (first >= end) return 0;
    count = std::min(count, static_cast<std::uint32_t>(end - first));
    std::memset(buffer, 0, std::size_t{count} * BlockBytes);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (first + i < FirstTold) continue;
      const std::size_t at = std::size_t{first + i - FirstTold} * BytesTold;
      if (at < told_.size())
        told_.substr(at).copy(reinterpret_cast<char*>(buffer) + std::size_t{i} * BlockBytes,
                              BytesTold);
    }
    return count;
  }

 private:
  std::string_view told_;
};

/// Walks all that a disc offers and reads into the files. A disc may offer no end of folders.
void walk(DiscReader& reader, const std::string& folder, int depth, int& budget) {
  std::array<char, 4096> piece{};
  for (const std::string& name : reader.list(folder)) {
    if (--budget < 0) return;
    const std::string path = folder.empty() ? name : folder + "\\" + name;
    const FileInfo info = reader.info(path);
    if (info.kind == FileInfo::Kind::Folder && depth < 12) walk(reader, path, depth + 1, budget);
    const auto stream = reader.openFile(path);
    if (!stream) continue;
    require(info.size >= Fixed4());
    const std::int64_t got = stream->read(info.size.whole() / 2, piece.data(), piece.size());
    require(got <= static_cast<std::int64_t>(piece.size()));
  }
}

}  // namespace

void fuzzIndexText(std::string_view input) {
  ScriptedDesktop desktop;
  RestorePage page(desktop);
  IndexText text;
  if (!text.load(std::string(input))) {
    require(!text.hasRows());
    return;
  }
  const IndexFilling filling = fillRestoreTree(text, page.vsRestore, [](int, int) {});
  require(filling.header.files >= 0 && filling.header.size >= Fixed4());
  const RestoreTree& tree = page.vsRestore;
  for (int row = 1; row < tree.Rows(); ++row) requireSoundRow(tree, row);
  RestoreSelection selection(page, desktop);
  if (tree.hasData()) selection.doClickRow(tree.Rows() / 2);
  selection.doSelectAllRows();
  require(page.SelectedCount == tree.Rows() - 1);
  selection.doSelectNone();
  require(page.SelectedCount == 0 && page.SelectedFiles == 0 && page.SelectedBytes == Fixed4());
}

void fuzzIndexArchive(std::string_view input) {
  constexpr std::int64_t Limit = 1 << 20;
  TempDir folder;
  LinuxFiles files(nullptr);
  ZipIndexArchive archive(files);
  const std::string zip = folder.write("zip", std::string(input));
  archive.isArchive(zip);
  archive.entryName(zip);
  const bool good = archive.extract(zip, folder / "text", IndexPassword, Limit, {}) == 0;
  require(good == files.doFileExists(folder / "text"));
  require(files.doGetFileSize(folder / "text") <= Fixed4(Limit));
}

void fuzzJobFile(std::string_view input) {
  JobBench bench;
  bench.desktop.answers.assign(8, Answer::No);
  if (!bench.jobFile.doLoadJob(bench.folder.write("job.jbf", std::string(input)))) return;
  require(!bench.job.txJobName.empty());
  require(bench.jobFile.doWriteJobFile(bench.folder / "again.jbf"));
  const std::string stored = TempDir::read(bench.folder / "again.jbf");
  JobBench second;
  second.desktop.answers.assign(8, Answer::No);
  require(second.jobFile.doLoadJob(bench.folder / "again.jbf"));
  require(second.jobFile.doWriteJobFile(bench.folder / "third.jbf"));
  require(TempDir::read(bench.folder / "third.jbf") == stored);
}

void fuzzSettings(std::string_view input) {
  TempDir folder;
  LinuxFiles files(nullptr);
  Profile profile(files, folder.write("settings", std::string(input)));
  Settings settings(profile);
  settings.doReadInitData();
  settings.doSaveInitData();
  Settings again(profile);
  again.doReadInitData();
  require(again.SplitSize == settings.SplitSize && again.PlaySound == settings.PlaySound);
  profile.doWriteProfile("Restore", "Target", "/kept");
  require(profile.doReadProfile("Restore", "Target", "") == "/kept");
}

void fuzzDiscImage(std::string_view input) {
  static const DiscLibraries libraries;
  require(libraries.isReady());
  const auto reader = DiscReader::open(libraries, std::make_unique<SparseBlocks>(input), 0);
  int budget = 500;
  if (reader) walk(*reader, "", 0, budget);
  DiscLibraries::takeFailures();  // or they would pile up
}

void fuzzDiscAppend(std::string_view input) {
  static const DiscLibraries libraries;
  static const TempDir folder;
  static const std::string source = folder.write("source", "source");
  const ManualClock clock;
  IsoLayout layout(clock);
  layout.createDir("\\", "F");
  layout.insert({"F", "new", source, {}, {}});
  IsoLayout::Request request{.libraries = libraries};
  request.startBlock = 1 << 20;
  request.replace = true;
  request.openEarlier = [input] { return std::make_unique<SparseBlocks>(input); };
  std::string why;
  const auto track = layout.prepare(std::move(request), why);
  require(track ? track->appended && track->blocks > 0 : !why.empty());
  DiscLibraries::takeFailures();  // or they would pile up
}

void fuzzGridFile(std::string_view input) {
  for (const bool withChecks : {false, true}) {
    Table table;
    if (!table.loadData(input, withChecks)) {
      require(table.Rows() == 1);
      continue;
    }
    const std::string stored = table.saveData(withChecks);
    Table again;
    require(again.loadData(stored, withChecks) && again.saveData(withChecks) == stored);
  }
}

}  // namespace korvenal::test
