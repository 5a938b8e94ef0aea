#include "app/RunDiscs.h"

#include "core/SizeText.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr int RecordDrive = 0;
constexpr int RecordLabel = 5;
constexpr int RecordNote = 7;

std::string labelOf(int disc) {
  return "Backup #" + std::to_string(disc);
}

/// The row of the last attempt at a disc; 0 for none.
int lastAttempt(const Table& records, const std::string& label) {
  int row = records.Rows() - 1;
  while (row > 0 && records.text(row, RecordLabel) != label) --row;
  return row;
}

void addTimeLeft(std::string& text, const RunPace& pace) {
  if (const auto left = pace.secondsLeft()) text += ", " + aboutTime(*left);
}

/// "38 %  1.7 GB of 4.4 GB, 21 MB/s, about 2 minutes" while data goes on the disc; else what the
/// run says itself.
std::string workText(const RunFacts& facts, Fixed4 bytes) {
  const Progress& progress = facts.progress;
  if (!progress.writing) {
    std::string text = progress.text;
    if (Text::endsWith(text, "%")) addTimeLeft(text, facts.pace);
    return text;
  }
  const double part = progress.bar / 100.0;
  const auto sizeText = [](double size) {
    return formatSizeText(Fixed4(static_cast<std::int64_t>(size)), true);
  };
  std::string text = std::to_string(progress.bar) + " %  " + sizeText(bytes.toDouble() * part) +
                     " of " + sizeText(bytes.toDouble());
  const double pace = facts.pace.percentsPerSecond();
  if (pace > 0) text += ", " + sizeText(bytes.toDouble() * pace / 100) + "/s";
  addTimeLeft(text, facts.pace);
  return text;
}

RunDisc atWork(const std::string& label, const RunFacts& facts, Fixed4 bytes) {
  return {label, facts.progress.bar, DiscState::Writing, workText(facts, bytes)};
}

RunDisc attempted(const std::string& label, const std::string& note) {
  constexpr int Whole = 100;
  return {label, Whole, isGoodNote(note) ? DiscState::Verified : DiscState::Failed, note};
}

}  // namespace

bool isGoodNote(const std::string& note) {
  return Text::startsWith(note, "Success") || note == "Skip blank disc.";
}

std::vector<RunDisc> backupDiscs(const Plan& plan, int current, const RunFacts& facts) {
  std::vector<RunDisc> discs;
  for (int disc = 1; disc <= plan.TotalDiscs; ++disc) {
    const std::string label = labelOf(disc);
    const Fixed4 bytes = plan.DiscUsed[static_cast<std::size_t>(disc - 1)];
    const int row = lastAttempt(facts.records, label);
    if (facts.DiscInWork && disc == current)
      discs.push_back(atWork(label, facts, bytes));
    else if (row > 0)
      discs.push_back(attempted(label, facts.records.text(row, RecordNote)));
    else
      discs.push_back({label, 0, DiscState::Planned, formatSizeText(bytes, true)});
  }
  return discs;
}

std::vector<RunDisc> restoreDiscs(const std::vector<int>& wanted, int done, const RunFacts& facts) {
  std::vector<RunDisc> discs;
  for (int at = 0; at < static_cast<int>(wanted.size()); ++at) {
    const std::string label = labelOf(wanted[static_cast<std::size_t>(at)]);
    const int row = lastAttempt(facts.records, label);
    if (facts.DiscInWork && at == done)
      discs.push_back(atWork(label, facts, {}));
    else if (row > 0)
      discs.push_back(attempted(label, facts.records.text(row, RecordNote)));
    else
      discs.push_back({label, 0, DiscState::Planned, {}});
  }
  return discs;
}

std::vector<RunDisc> eraseDiscs(const RunFacts& facts) {
  std::vector<RunDisc> discs;
  for (int row = 1; row < facts.records.Rows(); ++row)
    discs.push_back(
        attempted(facts.records.text(row, RecordDrive), facts.records.text(row, RecordNote)));
  if (facts.DiscInWork) discs.push_back(atWork("Erase", facts, {}));
  return discs;
}

}  // namespace korvenal
