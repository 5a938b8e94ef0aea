#include "job/JobFile.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "job/ItemFacts.h"
#include "job/JobControls.h"
#include "job/JobOptions.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view Extension = ".JBF";
constexpr std::int64_t MaxJobFileBytes = 64LL << 20;
constexpr int MaxStoredRows = 200'000;  ///< imports may bring a job above its 10,000 items

bool isJobFileName(std::string_view path) {
  const std::string_view name = Paths::doGetFilePart(path);
  return name.size() > Extension.size() &&
         Text::equalsIgnoreCase(name.substr(name.size() - Extension.size()), Extension);
}

/// The name of a job by its file: the file's name without its last four characters.
std::string jobNameOf(std::string_view path) {
  std::string_view name = Paths::doGetFilePart(path);
  if (name.size() > Extension.size()) name.remove_suffix(Extension.size());
  return cleanJobName(name);
}

/// The name that an item of the file gets on disc; empty when there is none for it.
std::string usableName(const Table& contents, int row) {
  const std::string& stored = contents.text(row, ContentsName);
  if (isItemName(stored)) return stored;
  // A name that no disc can hold was never written by this program.
  std::string own = itemName(Paths::withoutEnd(contents.text(row, ContentsPath)));
  return isItemName(own) ? own : std::string();
}

/// True when no two items stand under one name, as the table compares them: without case.
bool hasDistinctNames(const Table& contents) {
  std::unordered_set<std::string> names;
  for (int row = 1; row < contents.Rows(); ++row) {
    const std::string name = usableName(contents, row);
    if (!name.empty() && !names.insert(Text::toUpper(name)).second) return false;
  }
  return true;
}

}  // namespace

bool JobFile::doTellError(const std::string& text, const std::string& title) {
  services_.desktop.doShowMessage({.text = text, .title = title, .icon = MessageIcon::Stop});
  return false;
}

bool JobFile::doQuerySaveJob() {
  if (!job_.hasItems() || !job_.onBackupPage || !job_.Modified) return true;
  const Answer answer = services_.desktop.doShowMessage(
      {.text = "Do you want to save the change of current backup job?",
       .title = gProductName,
       .icon = MessageIcon::Question,
       .buttons = MessageButtons::YesNoCancel});
  if (answer == Answer::Yes) return doSaveJob();
  return answer == Answer::No;
}

FileDialog JobFile::jobDialog() const {
  FileDialog dialog;
  dialog.filterName = "Backup Job File(*.jbf)";
  dialog.pattern = "*.jbf";
  const std::string folder =
      services_.profile.doReadProfile("Backup", "JobPath", services_.workspace.homeFolder);
  if (services_.files.doFolderExists(folder)) dialog.folder = folder;
  return dialog;
}

void JobFile::doRememberFolder(const std::string& path) {
  if (!path.empty())
    services_.profile.doWriteProfile("Backup", "JobPath", Paths::doGetFolderPart(path));
}

std::string JobFile::doOpenJobDialog() {
  FileDialog dialog = jobDialog();
  dialog.title = "Korvenal to DVD - Open Backup Job";
  std::string path = services_.desktop.doAskOpenFile(dialog);
  doRememberFolder(path);
  return path;
}

std::string JobFile::doSaveJobDialog(const std::string& jobName) {
  FileDialog dialog = jobDialog();
  dialog.title = "Korvenal to DVD - Save Backup Job to File";
  dialog.fileName = jobName + ".jbf";
  std::string path = services_.desktop.doAskSaveFile(dialog);
  doRememberFolder(path);
  return path;
}

bool JobFile::doSaveJob() {
  constexpr const char* Title = "Save Backup Job";
  job_.txJobName = std::string(Text::trim(job_.txJobName));
  if (!job_.hasItems())
    return doTellError("Backup data contents is empty, unable to save job.", Title);
  const std::string path = doSaveJobDialog(job_.txJobName);
  if (path.empty()) return false;
  if (!isJobFileName(path)) return doTellError("Backup job file type error.");
  bool written = false;
  {
    const WaitPointer wait(services_.desktop);
    if (job_.txJobName.empty() || job_.txJobName == NewJobName) job_.txJobName = jobNameOf(path);
    if (job_.txJobName.empty()) job_.txJobName = NewJobName;  // a file name of nothing but ":?*"
    written = doWriteJobFile(path);
  }
  if (!written) return doTellError("Backup job save error.", Title);
  job_.SavedOnce = true;
  job_.doMarkChanged(false);
  return true;
}

bool JobFile::doWriteJobFile(const std::string& path) {
  Files& files = services_.files;
  if (files.doFolderExists(path)) return false;
  // Replaced in one step and never deleted first: a crash leaves the old job or the new one.
  if (files.doFileExists(path)) files.doClearReadOnly(path);
  Table& contents = job_.vsContents;
  contents.setText(0, HeaderProduct, gProductName);
  contents.setText(0, HeaderJobName, std::string(Text::trim(job_.txJobName)));
  contents.setText(0, HeaderInclude, std::string(Text::trim(job_.comboInclude)));
  contents.setText(0, HeaderExclude, std::string(Text::trim(job_.comboExclude)));
  contents.setText(0, HeaderOptions, buildOptionText(job_));
  if (!files.writeAll(path, contents.saveData(true))) return false;
  job_.JobFile = path;
  return true;
}

bool JobFile::doLoadJob(std::string path) {
  if (path.empty()) {
    if (!doQuerySaveJob()) return false;
    path = doOpenJobDialog();
    if (path.empty()) return false;
    if (!isJobFileName(path)) return doTellError("Backup job file type error.");
  }
  ActionState& state = services_.state;
  {
    const WaitPointer wait(services_.desktop);
    job_.txJobName = jobNameOf(path);
    services_.newJob.doNewJobValues();
    services_.desktop.doYield();
    job_.doMarkChanged(false);
  }
  // Ends with this function, whatever the file holds: nothing else would ever clear the flag.
  const FlagScope running(state.ActionRunning);
  const JobText content = readJobText(path);
  if (content.unreadable) return doTellError("Backup job file open error!");
  if (!doTakeContents(content.text)) return doTellError("Invalid backup job file format!");
  const WaitPointer wait(services_.desktop);
  {
    const FlagScope ignore(state.IgnoreEvents);
    doTakeHeader(path);
    services_.desktop.doYield();
  }
  doTakeItems();
  job_.vsContents.Row = job_.hasItems() ? 1 : 0;
  job_.SavedOnce = false;
  job_.doMarkChanged(false);
  job_.doSetEstimated(false);
  return true;
}

JobFile::JobText JobFile::readJobText(const std::string& path) const {
  const WaitPointer wait(services_.desktop);
  // A file beyond the limit can be read; it is no job.
  if (services_.files.doGetFileSize(path) > Fixed4(MaxJobFileBytes)) return {};
  auto text = services_.files.readAll(path, MaxJobFileBytes);
  if (!text) return {.unreadable = true, .text = {}};
  return {.unreadable = false, .text = std::move(*text)};
}

bool JobFile::doTakeContents(const std::string& text) {
  Table& contents = job_.vsContents;
  const bool valid =
      contents.loadData(text, true, MaxStoredRows) &&
      contents.text(0, HeaderProduct) == gProductName && !contents.text(0, HeaderJobName).empty() &&
      contents.text(0, HeaderOptions).size() >= ShortestOptionText && hasDistinctNames(contents);
  if (!valid) {
    contents.clearData();
    for (int col = 0; col < contents.Cols(); ++col) contents.setText(0, col, "");
  }
  job_.doInitContents();
  return valid;
}

void JobFile::doTakeHeader(const std::string& path) {
  const Table& contents = job_.vsContents;
  job_.JobFile = path;
  const std::string name = cleanJobName(contents.text(0, HeaderJobName));
  if (!name.empty()) job_.txJobName = name;
  job_.comboInclude = cleanFilter(Text::trim(contents.text(0, HeaderInclude)));
  if (job_.comboInclude.empty()) job_.comboInclude = "*";
  job_.comboExclude = cleanFilter(Text::trim(contents.text(0, HeaderExclude)));
  applyOptionText(job_, contents.text(0, HeaderOptions));
}

void JobFile::doTakeItems() {
  Table& contents = job_.vsContents;
  std::vector<int> kept;
  for (int row = contents.Rows() - 1; row >= 1; --row) {
    services_.desktop.doYield();
    if (doTakeItem(row)) kept.push_back(row);
  }
  std::reverse(kept.begin(), kept.end());
  contents.arrangeRows(kept);
}

bool JobFile::doTakeItem(int row) {
  Table& contents = job_.vsContents;
  const std::string path(Paths::withoutEnd(contents.text(row, ContentsPath)));
  contents.setText(row, ContentsPath, path);
  const std::string name = usableName(contents, row);
  if (name.empty()) return false;
  contents.setText(row, ContentsName, name);
  const FileInfo info = itemInfo(services_.files, path);
  if (info.kind != FileInfo::Kind::Missing) {
    fillItemRow(contents, row, info, services_.desktop);
    return true;
  }
  const bool isFile = Text::toInteger(contents.text(row, ContentsType)) == 1;
  contents.setText(row, ContentsType, isFile ? "1" : "0");
  fillMissingRow(contents, row, services_.desktop);
  return true;
}

}  // namespace korvenal
