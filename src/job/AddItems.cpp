#include "job/AddItems.h"

#include <algorithm>

#include "job/ItemFacts.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t MaxPlayListBytes = 64LL << 20;

}  // namespace

std::size_t AddItems::doPickItems(const std::vector<std::string>& paths) {
  return doRunWorker(WorkerBurn, paths);
}

std::size_t AddItems::doDropItems(const std::vector<std::string>& paths) {
  return paths.empty() ? 0 : doRunWorker(WorkerRestore, paths);
}

std::size_t AddItems::doRunWorker(int workerMode, const std::vector<std::string>& paths) {
  std::size_t handled = 0;
  // The browser may be open below the worker, and holds the flag already.
  const bool ignoredBefore = services_.state.IgnoreEvents;
  services_.state.IgnoreEvents = true;
  services_.state.WorkerMode = workerMode;
  frmAddFiles worker(services_.state, services_.desktop, [&](frmAddFiles& form) {
    handled = workerMode == WorkerBurn ? doGetFiles(paths, form) : doGetFiles2(paths, form);
  });
  services_.desktop.doShowModal(worker);
  services_.state.IgnoreEvents = ignoredBefore;
  return handled;
}

std::size_t AddItems::doGetFiles(const std::vector<std::string>& paths, frmAddFiles& worker) {
  return doAddPaths(paths, "Unsporrted Format", worker);
}

std::size_t AddItems::doGetFiles2(const std::vector<std::string>& paths, frmAddFiles& worker) {
  return doAddPaths(paths, "Unspported Format", worker);
}

std::size_t AddItems::doAddPaths(const std::vector<std::string>& paths,
                                 const std::string& refusalTitle, frmAddFiles& worker) {
  job_.doMarkChanged(true);
  RowsByName names = rowsByName();
  std::size_t handled = 0;
  for (const std::string& path : paths) {
    worker.doShowPath(path);
    services_.desktop.doYield();
    if (job_.vsContents.Rows() > MaxItems) {
      services_.desktop.doShowMessage(
          {.text = "Backup data contents has exceeded maximum 10,000 items limitation.",
           .title = "Stop Adding",
           .icon = MessageIcon::Warning});
      services_.state.StopAction = true;
      break;
    }
    ++handled;
    if (!doAddPath(std::string(Paths::withoutEnd(path)), refusalTitle, names)) break;
  }
  services_.state.TaskDone = true;
  return handled;
}

bool AddItems::doAddPath(const std::string& path, const std::string& refusalTitle,
                         RowsByName& names) {
  const FileInfo info = itemInfo(services_.files, path);
  if (info.kind == FileInfo::Kind::Missing) {
    const bool isThere = services_.files.doFileExists(path);
    const std::string shown = Text::escaped(path);
    services_.desktop.doShowMessage(
        {.text = isThere ? shown + "\nItem name contains unsupported unicode character. It will "
                                   "be excluded."
                         : "There is no " + shown + ".",
         .title = refusalTitle,
         .icon = MessageIcon::Warning});
    return true;
  }
  if (services_.state.StopAction) return false;
  const std::string name = itemName(path);
  const auto [known, isNew] = names.try_emplace(Text::toUpper(name), job_.vsContents.Rows());
  if (!isNew) return doTellDuplicate(name, known->second);
  doAddRow(path, name, info);
  return true;
}

AddItems::RowsByName AddItems::rowsByName() const {
  RowsByName names;
  for (int row = 1; row < job_.vsContents.Rows(); ++row)
    names.try_emplace(Text::toUpper(job_.vsContents.text(row, ContentsName)), row);
  return names;
}

bool AddItems::doTellDuplicate(const std::string& name, int row) {
  job_.vsContents.Row = row;
  const Answer answer = services_.desktop.doShowMessage(
      {.text = Text::escaped(name) + "\nItem name duplicated. It will be excluded.",
       .title = "Error",
       .icon = MessageIcon::Stop,
       .buttons = MessageButtons::OkCancel});
  return answer != Answer::Cancel;
}

void AddItems::doAddRow(const std::string& path, const std::string& name, const FileInfo& info) {
  Table& contents = job_.vsContents;
  const int row = contents.addRow();
  contents.setText(row, ContentsName, name);
  contents.setText(row, ContentsPath, path);
  fillItemRow(contents, row, info, services_.desktop);
  contents.Row = row;
}

void AddItems::doCreateItem(int& type, const std::string& name, const std::string& path) {
  Table& contents = job_.vsContents;
  const int row = contents.addRow();
  contents.setText(row, ContentsType, type == 1 ? "1" : "0");
  contents.setText(row, ContentsName, name);
  contents.setText(row, ContentsPath, path);
  const FileInfo info = itemInfo(services_.files, path);
  if (info.kind == FileInfo::Kind::Missing) {
    fillMissingRow(contents, row, services_.desktop);
  } else {
    type = isFileItem(info) ? 1 : 0;
    fillItemRow(contents, row, info, services_.desktop);
  }
  if (type != 1) contents.setCheck(row, ContentsSubfolder, Table::Check::Ticked);
  contents.Row = row;
  job_.doMarkChanged(true);
}

bool AddItems::doImportM3U() {
  Profile& profile = services_.profile;
  FileDialog dialog;
  dialog.title = "Korvenal to DVD - Import M3U File List";
  dialog.filterName = "Multimedia Playlist File(*.m3u)";
  dialog.pattern = "*.m3u";
  dialog.folder = profile.doReadProfile("Backup", "M3UPath", services_.workspace.homeFolder);
  const std::string file = services_.desktop.doAskOpenFile(dialog);
  if (file.empty()) return false;
  const std::string folder(Paths::doGetFolderPart(file));
  profile.doWriteProfile("Backup", "M3UPath", folder);
  if (!services_.files.doFileExists(file)) return false;

  const FlagScope ignore(services_.state.IgnoreEvents);
  const auto text = services_.files.readAll(file, MaxPlayListBytes);
  if (!text || text->empty()) {
    services_.desktop.doShowMessage(
        {.text = "M3U file format error!", .title = "Error", .icon = MessageIcon::Stop});
    return false;
  }
  if (doImportLines(*text, Paths::withEnd(folder))) job_.doMarkChanged(true);
  return true;
}

AddItems::Listed AddItems::findListed(std::string_view entry, const std::string& folder) const {
  std::vector<std::string> readings = {std::string(entry), Text::fromLatin1(entry)};
  if (readings.back() == readings.front()) readings.pop_back();
  for (const std::string& reading : readings) {
    std::string path = Paths::isNative(reading) ? reading : folder + reading;
    const FileInfo info = itemInfo(services_.files, path);
    if (info.kind != FileInfo::Kind::Missing && info.kind != FileInfo::Kind::Folder)
      return {std::move(path), info};
  }
  return {};
}

bool AddItems::doImportLines(std::string_view text, const std::string& folder) {
  const WaitPointer wait(services_.desktop);
  RowsByName names = rowsByName();
  bool added = false;
  text = Text::withoutByteOrderMark(text);
  while (!text.empty()) {
    services_.desktop.doYield();
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::string_view entry = Text::trim(line.substr(0, line.find('\t')));
    if (entry.empty() || entry.front() == '#') continue;
    const Listed listed = findListed(entry, folder);
    if (listed.path.empty()) continue;
    const std::string name = itemName(listed.path);
    const auto [known, isNew] = names.try_emplace(Text::toUpper(name), job_.vsContents.Rows());
    if (isNew) {
      doAddRow(listed.path, name, listed.info);
      added = true;
    } else if (!doTellDuplicate(name, known->second)) {
      break;
    }
  }
  return added;
}

}  // namespace korvenal
