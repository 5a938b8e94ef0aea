#include "burn/Verification.h"

#include <algorithm>

#include "burn/BackgroundWork.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int FilesPerStep = 10;
const std::string Pass = "PASS";

/// The name under which the index stands on a disc, in upper case.
bool isIndexName(const std::string& upperName) {
  return Text::endsWith(upperName, ".BDX") &&
         (Text::startsWith(upperName, "_KORVEN") || Text::startsWith(upperName, "KORVEN"));
}

/// What the source column tells of the program's own files, which head disc 1.
std::string friendlySource(const std::string& name, int disc, int reportRow) {
  if (disc != 1) return {};
  if (reportRow == 1 && isIndexName(Text::toUpper(name))) return "Backup Index";
  if (reportRow <= 2 && name == KitFileName) return "ResotoreKit Installer";
  return {};
}

/// Brackets the marking of files as saved.
class SavedMarks {
 public:
  explicit SavedMarks(ArchiveBits& bits) : bits_(bits) { bits_.begin(); }
  ~SavedMarks() { bits_.commit(); }
  SavedMarks(const SavedMarks&) = delete;
  SavedMarks& operator=(const SavedMarks&) = delete;

 private:
  ArchiveBits& bits_;
};

}  // namespace

void Verification::doVerifyDisc(DiscAttempt& attempt, bool reset) {
  RunGrids& grids = services_.grids;
  services_.page.pbStopEnabled = false;
  services_.page.OnlyShowErrorFileEnabled = false;
  grids.PBErrorList[0] = "&Verify Report - " + attempt.record.label;
  grids.doClearReport();
  if (reset) doResetDisc();
  services_.desktop.doYield();
  if (services_.engine.do_TestUnitReady() == 0) {
    grids.doEventMessage("Skip verifying backup files.");
  } else {
    services_.desktop.doYield();
    grids.doEventMessage("Verifying backup files...");
    const MediumLock lock(services_.engine);
    doVerifyFiles(attempt);
    attempt.verified = true;
  }
  services_.page.pbStopEnabled = true;
  services_.page.OnlyShowErrorFileEnabled = true;
  attempt.doNoteFileErrors();
}

void Verification::doResetDisc() {
  services_.grids.etProgress[0] = {"Reset disc, please wait...", 0};
  services_.grids.doEventMessage("Reset disc for verifying backup files...");
  services_.engine.do_UnlockMedium();
  services_.engine.do_EjectMedium();
  services_.desktop.doYield();
  services_.engine.do_LoadMedium();
}

void Verification::doVerifyFiles(DiscAttempt& attempt) {
  const PlanTable& table = services_.plan.vsBuffer;
  const SavedMarks marks(services_.bits);
  int splitRow = 0;
  int count = 0;
  for (int row = 1; row < table.Rows(); ++row) {
    const RowType type = table.row(row).type;
    if (type == RowType::SplitFile) splitRow = row;
    if (table.row(row).disc != attempt.number) continue;
    if (type != RowType::File && type != RowType::Piece) continue;
    if (++count % FilesPerStep == 0)
      doShowPercent(static_cast<int>(
          std::min<std::int64_t>(std::int64_t{count} * 100 / std::max(attempt.files, 1), 100)));

    const Result result = resultOf(attempt, row);
    doAddVerifyRow(attempt.number, Paths::onDrive(attempt.letter, table.fileOnDisc(row)),
                   result.text, table.sourcePath(row));
    if (!result.saved) {
      ++attempt.FileErrorCount;
    } else if (services_.job.isDifferential()) {
      doMarkSaved(attempt, row, splitRow);
    }
  }
  doShowPercent(100);
}

Verification::Result Verification::resultOf(const DiscAttempt& attempt, int row) const {
  const PlanTable& table = services_.plan.vsBuffer;
  const std::string discPath = table.fileOnDisc(row);
  FileInfo onDisc;
  // Padding of the right size stands where a source could not be read.
  if (!table.row(row).lost && !attempt.padded.contains(discPath))
    onDisc = services_.files.doGetInfo(Paths::onDrive(attempt.letter, discPath));
  if (onDisc.kind == FileInfo::Kind::Missing) {
    const bool gone = !services_.files.doFileExists(table.sourcePath(row));
    return {gone ? "Source not found" : "Backup failed", false};
  }
  const bool whole = onDisc.kind == FileInfo::Kind::File && onDisc.size == table.row(row).size;
  const bool asScanned = changes_.growth(row) == Fixed4(0);
  return {whole && asScanned ? Pass : "Size error", whole};
}

void Verification::doAddVerifyRow(int disc, const std::string& pathOnDisc,
                                  const std::string& result, const std::string& source) {
  Table& report = services_.grids.vsError[0];
  const std::string name(Paths::doGetFilePart(pathOnDisc));
  const std::string friendly = friendlySource(name, disc, report.Rows());
  report.Row = report.addRow({name, result, friendly.empty() ? source : friendly},
                             services_.grids.OnlyShowErrorFile && result == Pass);
}

void Verification::doMarkSaved(const DiscAttempt& attempt, int row, int splitRow) {
  const PlanTable& table = services_.plan.vsBuffer;
  if (table.row(row).type == RowType::Piece && !isWholeFileSaved(row, splitRow)) return;
  // Not as the file is by now: a change since then stays to be saved.
  const auto burned = std::lower_bound(attempt.states.begin(), attempt.states.end(), row,
                                       [](const auto& state, int at) { return state.first < at; });
  if (burned != attempt.states.end() && burned->first == row)
    services_.bits.doClearArchiveBit(table.sourcePath(row), burned->second);
}

bool Verification::isWholeFileSaved(int row, int splitRow) {
  // A split file is saved with the last of its pieces, whatever disc each one is on.
  if (splitRow == 0) return false;
  const PlanTable& table = services_.plan.vsBuffer;
  auto& passed = passedPieces_[splitRow];
  passed.insert(table.range(row).number);
  return static_cast<int>(passed.size()) == table.range(splitRow).number;
}

void Verification::doShowPercent(int percent) {
  services_.grids.etProgress[0] = {std::to_string(percent) + "%", percent};
  services_.desktop.doYield();
}

}  // namespace korvenal
