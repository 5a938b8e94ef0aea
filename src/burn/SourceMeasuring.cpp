#include "burn/SourceMeasuring.h"

#include <algorithm>

namespace korvenal {

namespace {

constexpr const char* OtherStateText = "The file has changed and no longer fits its pieces";
constexpr const char* UntoldText = "The file has changed, and no index on its disc tells so";
constexpr const char* GrownText = "The file has grown and does not fit on the disc";

std::int64_t blocksOf(Fixed4 bytes) {
  return (bytes.whole() + BlockBytes - 1) / BlockBytes;
}

}  // namespace

void SourceMeasuring::doFitSplitFiles(const DiscAttempt& attempt) {
  const PlanTable& table = services_.plan.vsBuffer;
  for (int row = 1; row < table.Rows(); ++row) {
    const PlanTable::Row& piece = table.row(row);
    if (piece.type != RowType::Piece || piece.disc != attempt.number || piece.lost) continue;
    if (!doFitSplitFile(row)) return;
  }
}

bool SourceMeasuring::doFitSplitFile(int piece) {
  const int split = changes_.fileRowOf(piece);
  for (;;) {
    const FileInfo now = services_.files.doGetInfo(services_.plan.vsBuffer.sourcePath(piece));
    // Why it cannot be read is told with the other sources.
    if (now.kind != FileInfo::Kind::File || changes_.doFitPieces(split, now)) return true;
    switch (doAskAbout(piece, OtherStateText)) {
      case Wish::Skip:
        changes_.doLose(split);
        doTellLost(piece, OtherStateText);
        return true;
      case Wish::Retry:
        break;
      case Wish::Stop:
        services_.state.StopAction = true;
        return false;
    }
  }
}

bool SourceMeasuring::doMeasure(DiscAttempt& attempt, const std::vector<int>& files) {
  for (bool again = true; again;)
    if (!doLook(files, again)) return false;
  doJudgePieces(files);
  doKeepStates(attempt, files);
  return !services_.state.StopAction;
}

bool SourceMeasuring::doLook(const std::vector<int>& files, bool& again) {
  again = false;
  const auto findings = services_.engine.do_MeasureSources([this] {
    services_.desktop.doYield();
    return services_.state.StopAction;
  });
  for (const SourceFinding& finding : findings) {
    if (services_.state.StopAction) return false;
    const int row = files.at(static_cast<std::size_t>(finding.file));
    const bool piece = services_.plan.vsBuffer.row(row).type == RowType::Piece;
    if (finding.reason.empty()) {
      // The pieces of a split file are judged together.
      if (!piece) changes_.doChange(row, finding.now);
      continue;
    }
    if (services_.plan.vsBuffer.row(row).lost) continue;  // another of its pieces was told
    switch (doAskAbout(row, finding.reason)) {
      case Wish::Skip:
        doLeaveOut(files, finding.file, finding.reason);
        break;
      case Wish::Retry:
        again = true;
        break;
      case Wish::Stop:
        services_.state.StopAction = true;
        return false;
    }
  }
  return !services_.state.StopAction;
}

SourceMeasuring::Wish SourceMeasuring::doAskAbout(int row, const std::string& reason) {
  // The setting of the program governs here, not the job's box of the same name.
  if (services_.settings.SkipError) return Wish::Skip;
  const FlagScope modal(services_.state.IgnoreEvents);
  const Answer answer = services_.desktop.doShowMessage(
      {.text = services_.plan.vsBuffer.sourcePath(row) + ": " + reason +
               "\nThis file cannot be saved. Skip it, try again, or stop the backup?",
       .title = "Burn Backup",
       .icon = MessageIcon::Warning,
       .buttons = MessageButtons::SkipRetryStop});
  if (answer == Answer::Retry) return Wish::Retry;
  return answer == Answer::Skip ? Wish::Skip : Wish::Stop;
}

void SourceMeasuring::doTellLost(int row, const std::string& reason) {
  services_.grids.doEventMessage("*" + services_.plan.vsBuffer.sourcePath(row) + ": " + reason);
}

void SourceMeasuring::doLeaveOut(const std::vector<int>& files, std::int32_t file,
                                 const std::string& reason) {
  const int row = files[static_cast<std::size_t>(file)];
  changes_.doLose(row);
  services_.engine.do_LeaveOutSource(file);
  doTellLost(row, reason);
}

void SourceMeasuring::doJudgePieces(const std::vector<int>& files) {
  const PlanTable& table = services_.plan.vsBuffer;
  const auto count = static_cast<std::int32_t>(files.size());
  const auto isPiece = [&](std::int32_t file) {
    return table.row(files[static_cast<std::size_t>(file)]).type == RowType::Piece;
  };
  for (std::int32_t file = 0; file < count; ++file) {
    if (!isPiece(file)) continue;
    const int row = files[static_cast<std::size_t>(file)];
    if (!table.row(row).lost &&
        !changes_.doJoinState(changes_.fileRowOf(row), services_.engine.do_GetMeasuredSource(file)))
      doLeaveOut(files, file, OtherStateText);
  }
  // A loss takes the pieces in front of it along.
  for (std::int32_t file = 0; file < count; ++file)
    if (isPiece(file) && table.row(files[static_cast<std::size_t>(file)]).lost)
      services_.engine.do_LeaveOutSource(file);
}

bool SourceMeasuring::doTakeOutGrown(const std::vector<int>& files, std::int64_t blocks) {
  const PlanTable& table = services_.plan.vsBuffer;
  std::vector<std::int32_t> grown;
  for (std::size_t file = 0; file < files.size(); ++file) {
    const PlanTable::Row& row = table.row(files[file]);
    if (row.type == RowType::File && !row.lost && changes_.growth(files[file]) > Fixed4(0))
      grown.push_back(static_cast<std::int32_t>(file));
  }
  const auto rowOf = [&](std::int32_t file) { return files[static_cast<std::size_t>(file)]; };
  std::stable_sort(grown.begin(), grown.end(), [&](std::int32_t a, std::int32_t b) {
    return changes_.growth(rowOf(a)) > changes_.growth(rowOf(b));
  });
  for (const std::int32_t file : grown) {
    if (blocks <= 0) break;
    blocks -= blocksOf(table.row(rowOf(file)).size);
    doLeaveOut(files, file, GrownText);
  }
  return !grown.empty();
}

void SourceMeasuring::doTakeOutChanged(const std::vector<int>& files) {
  for (std::size_t file = 0; file < files.size(); ++file)
    if (!services_.plan.vsBuffer.row(files[file]).lost && changes_.isUntoldByFirst(files[file]))
      doLeaveOut(files, static_cast<std::int32_t>(file), UntoldText);
  doJudgePieces(files);
}

void SourceMeasuring::doKeepStates(DiscAttempt& attempt, const std::vector<int>& files) {
  attempt.states.clear();
  if (!services_.job.isDifferential()) return;
  for (std::size_t file = 0; file < files.size(); ++file)
    attempt.states.emplace_back(
        files[file], services_.engine.do_GetMeasuredSource(static_cast<std::int32_t>(file)));
}

}  // namespace korvenal
