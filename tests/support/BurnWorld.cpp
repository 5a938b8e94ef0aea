#include "support/BurnWorld.h"

namespace korvenal::test {

namespace {
constexpr UnixTime FileDate = 1'600'000'000;
constexpr std::int64_t MiB = 1'048'576;
constexpr std::int64_t BigBytes = 10 * MiB;
}  // namespace

FileInfo MemoryFiles::doGetInfo(const std::string& path) const {
  FileInfo info;
  if (const auto onDrive = Paths::asDrivePath(path)) {
    const auto drive = engine_.drives.find(onDrive->letter);
    if (drive == engine_.drives.end() || !drive->second.disc || drive->second.open) return info;
    const auto file = drive->second.disc->files.find(std::string(onDrive->discPath));
    if (file == drive->second.disc->files.end()) return info;
    info.kind = FileInfo::Kind::File;
    info.size = file->second;
    return info;
  }
  if (const auto source = sources.find(path); source != sources.end()) return source->second;
  if (const auto text = texts.find(path); text != texts.end()) {
    info.kind = FileInfo::Kind::File;
    info.size = static_cast<std::int64_t>(text->second.size());
  }
  return info;
}

std::optional<VolumeInfo> MemoryFiles::doGetVolumeInfo(const std::string& path) const {
  const auto onDrive = Paths::asDrivePath(path);
  const auto& disc = engine_.drives.at(onDrive->letter).disc;
  if (!disc || disc->sessions == 0) return std::nullopt;
  return VolumeInfo{
      .label = disc->label, .fileSystem = disc->fileSystem, .totalBytes = {}, .freeBytes = {}};
}

std::optional<std::string> MemoryFiles::readAll(const std::string& path, std::int64_t) const {
  const auto text = texts.find(path);
  return text == texts.end() ? std::nullopt : std::optional(text->second);
}

FileOutcome MemoryFiles::writeAll(const std::string& path, std::string_view content) {
  texts[path] = content;
  return {};
}

BurnWorld::BurnWorld() {
  engine.look = [this](const std::string& path) { return files.doGetInfo(path); };
  job.txJobName = "Holidays of 2026";
  job.vsContents.addRow({"0", "", "Photos"});
  profile.doWriteProfile("Backup", "Notice", "1");
  useDrives("V", 0);
}

void BurnWorld::useDrives(const std::string& letters, int mode) {
  devices.DeviceMode = mode;
  devices.DriveLetters.clear();
  for (const char letter : letters) {
    devices.DriveLetters += {letter, ':'};
    engine.drives[letter];
  }
}

BackupRun::Steps BurnWorld::steps() {
  return {.doEnsureDevice = [](bool) { return true; },
          .doScanFiles =
              [this](frmAddFiles&) {
                ++scans;
                desktop.doYield();
                if (!state.StopAction) planThreeDiscs();
                state.TaskDone = true;
              },
          .doAskLoadDisc =
              [this](int, DiscRequest& request) {
                const FlagScope modal(state.IgnoreEvents);
                desktop.doYield();
                if (promptGivesUp) state.StopAction = true;
                request.BurnFromDisc = request.DiscsBurned + 1;
                promptedFor.push_back(request.BurnFromDisc);
                for (auto& [letter, drive] : engine.drives) drive = {.disc = discToLoad};
              },
          .doShowJob = {}};
}

PlanTable::Row& BurnWorld::addRow(RowType type, PlanTable::Link folder, const std::string& name,
                                  std::int64_t bytes, int disc) {
  PlanTable& table = plan.vsBuffer;
  PlanTable::Row row;
  row.type = type;
  row.folder = folder;
  row.name = row.original = table.addText(name);
  row.size = bytes;
  row.disc = static_cast<std::uint8_t>(disc);
  row.itemFlag = type == RowType::File && folder == PlanTable::DiscRoot;
  plan.DiscUsed[row.disc - 1U] += row.size;
  plan.TotalDiscs = std::max<int>(plan.TotalDiscs, row.disc);
  return table.rows().emplace_back(row);
}

PlanTable::Link BurnWorld::addFolder(PlanTable::Link parent, const std::string& name, RowType type,
                                     int disc) {
  PlanTable::Row& row = addRow(type, parent, name, 0, disc);
  return row.own = plan.vsBuffer.addFolder(
             {.parent = parent, .name = row.name, .original = row.name, .source = 0});
}

void BurnWorld::addFile(PlanTable::Link folder, const std::string& name, std::int64_t bytes,
                        int disc) {
  PlanTable::Row& row = addRow(RowType::File, folder, name, bytes, disc);
  row.source = plan.vsBuffer.addText("/src/" + name);
  row.modified = FileDate;
  row.dated = true;
  files.sources["/src/" + name] = {
      .kind = FileInfo::Kind::File, .size = bytes, .modified = FileDate};
}

void BurnWorld::addPiece(PlanTable::Link split, const PlanTable::Range& range, int disc) {
  PlanTable::Row& row = addRow(RowType::Piece, split, "big.iso", range.end - range.start + 1, disc);
  row.source = plan.vsBuffer.addText("/src/big.iso");
  row.range = plan.vsBuffer.addRange(range);
}

void BurnWorld::planThreeDiscs() {
  plan.vsBuffer.clear();
  plan.clearTotals();
  plan.IndexOnDiscs = true;
  plan.RunStamp = "2026-11-22-10-00-F";
  plan.IndexDiscName = "_KORVEN{H}.bdx";
  plan.IndexTempPath = "/src/_KORVEN{H}.bdx";
  plan.IndexSizeFinal = 900;
  addFile(PlanTable::DiscRoot, "_KORVEN{H}.bdx", 900, 1);
  const auto photos = addFolder(PlanTable::DiscRoot, "Photos", RowType::Folder, 1);
  addFile(photos, "a.jpg", 3000, 1);

  const auto split = addFolder(photos, "big.iso", RowType::SplitFile, 1);
  PlanTable::Row& big = plan.vsBuffer.rows().back();
  big.size = BigBytes;
  big.modified = FileDate;
  big.dated = true;
  big.range = plan.vsBuffer.addRange({.number = 2, .start = 1, .end = 2});
  files.sources["/src/big.iso"] = {
      .kind = FileInfo::Kind::File, .size = BigBytes, .modified = FileDate};
  addPiece(split, {.number = 1, .start = 1, .end = 4 * MiB}, 1);
  addFolder(PlanTable::DiscRoot, "Photos", RowType::RepeatedFolder, 2);
  addPiece(split, {.number = 2, .start = 4 * MiB + 1, .end = BigBytes}, 2);
  addFile(photos, "b.jpg", 3000, 2);
  addFile(photos, "c.jpg", 3000, 3);
  plan.TotalFiles = 4;
  plan.TotalSplits = 1;
  plan.TotalSize = BigBytes + 9000;
}

void BurnWorld::planOneFile(std::int64_t bytes) {
  plan.vsBuffer.clear();
  plan.clearTotals();
  addFile(PlanTable::DiscRoot, "one.txt", bytes, 1);
}

std::string BurnWorld::events() const {
  std::string all;
  const Table& events = grids.vsEvent[0];
  for (int row = 1; row < events.Rows(); ++row)
    all += events.cellData(row, 1) + events.text(row, 1) + "\n";
  return all;
}

bool BurnWorld::hasEvent(const std::string& text) const {
  return ("\n" + events()).find("\n" + text + "\n") != std::string::npos;
}

}  // namespace korvenal::test
