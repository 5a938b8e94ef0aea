#include "records/HistoryFile.h"

#include <optional>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t MaxHistoryBytes = 16LL << 20;
constexpr int MaxHistoryRows = 10'000;
constexpr int MostKeptAside = 100;

/// The name for the file as it was that nothing has yet; empty when there are too many.
std::string nameAside(const Files& files, const std::string& path) {
  for (int number = 1; number <= MostKeptAside; ++number) {
    const std::string middle = number == 1 ? "" : "." + std::to_string(number);
    if (!files.doFileExists(path + middle + ".damaged")) return path + middle + ".damaged";
  }
  return {};
}

}  // namespace

std::string HistoryFile::doLoad(Table& table) {
  before_ = Before::Known;
  table.clearData();
  if (!files_.doFileExists(path_)) return {};
  const auto text = files_.readPart(path_, 0, MaxHistoryBytes);
  if (!text) {
    before_ = Before::Unread;
    return "The history in " + path_ + " cannot be read; it is kept as it is.";
  }
  const bool cut = files_.doGetFileSize(path_) > Fixed4(MaxHistoryBytes);
  // The cut goes through a line, which is not to pass for a whole one.
  const std::string_view lines =
      std::string_view(*text).substr(0, cut ? text->rfind('\n') + 1 : text->size());
  const int damaged = table.loadSoundRows(lines, cols_, MaxHistoryRows);
  if (damaged == 0 && !cut) return {};
  before_ = Before::Damaged;
  const std::string fault = doSave(table);
  if (!fault.empty()) return fault;
  return "The history in " + path_ +
         " was damaged: " + Text::counted(damaged + (cut ? 1 : 0), "line") +
         " left out. The file as it was is kept beside it.";
}

std::string HistoryFile::doSave(Table& table) {
  if (before_ == Before::Unread) {
    std::string fault = doTakeEarlier(table);
    if (!fault.empty()) return fault;
  }
  if (before_ != Before::Known) {
    std::string fault = doKeepAside();
    if (!fault.empty()) return fault;
    before_ = Before::Known;
  }
  return doWrite(table);
}

/// The file may only have been out of reach for a while: then its rows come behind the new ones.
std::string HistoryFile::doTakeEarlier(Table& table) {
  Table earlier;
  HistoryFile again(files_, path_, cols_);
  std::string fault = again.doLoad(earlier);
  if (again.before_ == Before::Unread) return {};
  before_ = again.before_;
  for (int row = 1; row < earlier.Rows(); ++row) {
    std::vector<std::string> texts;
    for (int col = 0; col < cols_; ++col) texts.push_back(earlier.text(row, col));
    table.addRow(std::move(texts));
  }
  return before_ == Before::Known ? std::string() : fault;
}

std::string HistoryFile::doKeepAside() {
  const std::string aside = nameAside(files_, path_);
  const auto whole = files_.readAll(path_, MaxHistoryBytes);
  // A copy leaves the old file in its place until the new one stands there.
  const bool kept = !aside.empty() && (whole ? static_cast<bool>(files_.writeAll(aside, *whole))
                                             : files_.doRename(path_, aside));
  return kept ? std::string()
              : "The history in " + path_ +
                    " is damaged and cannot be kept aside; it stays as it is.";
}

std::string HistoryFile::doWrite(const Table& table) {
  const FileOutcome written = files_.writeAll(path_, table.saveData());
  return written ? std::string()
                 : "The history in " + path_ + " cannot be written: " + written.text + ".";
}

}  // namespace korvenal
