#include "app/RunDiscs.h"

#include "app/frmMain.h"
#include "records/NoteKind.h"

namespace korvenal {

namespace {

constexpr int DriveColumn = 0;
constexpr int NoteColumn = 7;

char letterOf(const Table& records, int row) {
  const std::string& drive = records.text(row, DriveColumn);
  return drive.empty() ? '\0' : drive.front();
}

void doTakeRecord(RunDisc& disc, const Table& records, int row) {
  disc.drive = letterOf(records, row);
  disc.note = records.text(row, NoteColumn);
  const NoteKind kind = noteKind(disc.note);
  disc.state = kind == NoteKind::Good  ? RunDiscState::Verified
               : kind == NoteKind::Bad ? RunDiscState::Failed
                                       : RunDiscState::Planned;
  disc.percent = disc.state == RunDiscState::Planned ? 0 : 100;
}

void doTakeRecords(std::vector<RunDisc>& discs, const RunGrids& grids, int action) {
  const Table& records = grids.vsOutput[static_cast<std::size_t>(action)];
  for (int row = 1; row < records.Rows(); ++row) {
    const int place = grids.discOf(action, row);
    if (place < 1 || place > static_cast<int>(discs.size())) continue;
    RunDisc& disc = discs[static_cast<std::size_t>(place - 1)];
    doTakeRecord(disc, records, row);
    disc.verified = action == ActionController::Backup && grids.isVerified(row);
  }
}

void doTakeWork(RunDisc& disc, const RunPage& page, const Progress& progress, int action) {
  const bool verifying = !page.OnlyShowErrorFileEnabled;
  disc.drive = page.DriveInHand;
  disc.state = RunDiscState::Writing;
  disc.note.clear();
  disc.verified = false;
  disc.percent = progress.bar;
  if (action == ActionController::Erase) {
    disc.work = RunDisc::Work::Erasing;
    disc.percent = -1;
  } else if (verifying) {
    disc.work = RunDisc::Work::Verifying;
  } else if (progress.bytesDone < progress.bytesTotal) {
    disc.work = RunDisc::Work::Data;
  }
}

RunDisc planned(int number, Fixed4 bytes) {
  RunDisc disc;
  disc.number = number;
  disc.bytes = bytes;
  return disc;
}

std::vector<RunDisc> plannedDiscs(const frmMain& main) {
  std::vector<RunDisc> discs;
  if (!main.backup.PreparedForRun) return discs;
  for (int number = 1; number <= main.plan.TotalDiscs; ++number)
    discs.push_back(planned(number, main.plan.doGetDiscSZ(number)));
  return discs;
}

std::vector<RunDisc> wantedDiscs(const frmMain& main) {
  std::vector<RunDisc> discs;
  if (!main.restorePage.PreparedForRun) return discs;
  for (const int number : main.restorePage.RestoreDiscList)
    discs.push_back(planned(number, Fixed4()));
  return discs;
}

std::vector<RunDisc> erasedDiscs(const frmMain& main) {
  const Table& records = main.grids.vsOutput[ActionController::Erase];
  std::vector<RunDisc> discs(static_cast<std::size_t>(records.Rows() - 1));
  for (int row = 1; row < records.Rows(); ++row)
    doTakeRecord(discs[static_cast<std::size_t>(row - 1)], records, row);
  if (main.runPages[ActionController::Erase].DiscInHand > 0) discs.emplace_back();
  return discs;
}

}  // namespace

std::vector<RunDisc> runDiscs(const frmMain& main, int action) {
  const auto at = static_cast<std::size_t>(action);
  std::vector<RunDisc> discs;
  if (action == ActionController::Erase) {
    discs = erasedDiscs(main);
  } else {
    discs = action == ActionController::Backup ? plannedDiscs(main) : wantedDiscs(main);
    doTakeRecords(discs, main.grids, action);
  }
  const int inHand = main.runPages[at].DiscInHand;
  if (inHand >= 1 && inHand <= static_cast<int>(discs.size()))
    doTakeWork(discs[static_cast<std::size_t>(inHand - 1)], main.runPages[at],
               main.grids.etProgress[at], action);
  return discs;
}

}  // namespace korvenal
