#include "plan/Expansion.h"

#include "platform/Paths.h"

namespace korvenal {

Expansion::Expansion(const SourceScanServices& services, const Job& job, Plan& plan,
                     frmAddFiles& worker)
    : services_(services),
      job_(job),
      plan_(plan),
      table_(plan.vsBuffer),
      worker_(worker),
      filters_(filtersOf(job, plan.RunDate)),
      ownFiles_(services.ownFiles ? services.ownFiles() : OwnFiles()),
      dropTopFolder_(job.vsContents.Rows() == 2 && services.settings.ExcludeTopFolder) {}

Expansion::Outcome Expansion::run() {
  ActionState& state = services_.state;
  for (int item = 1; item < job_.vsContents.Rows(); ++item) {
    expandItem(item);
    services_.desktop.doYield();
    if (state.LimitExceeded) return Outcome::TooManyRows;
    if (state.StopAction) return Outcome::Stopped;
  }
  finish();
  return Outcome::Done;
}

void Expansion::finish() {
  worker_.doShowPath("");
  table_.dropEmptyRows();
  if (dropTopFolder_ && table_.hasData()) table_.rows().erase(table_.rows().begin() + 1);
  plan_.skippedNotes = skippedEntries_.notes();
  plan_.missed = skippedEntries_.missed();
}

void Expansion::expandItem(int item) {
  const std::string path(Paths::withoutEnd(job_.vsContents.text(item, ContentsPath)));
  worker_.doShowPath(path);
  const FileInfo info = services_.files.doGetInfo(path);
  if (services_.state.StopAction) return;
  if (info.kind == FileInfo::Kind::Missing) return skippedEntries_.addMissing(path);
  const std::string name = itemName(item, path);
  if (!Paths::isHoldable(name)) return excludeName(path);
  if (rootNames_.contains(name)) return skippedEntries_.addTakenName(path);
  const int rows = table_.Rows();
  expandAt(item, path, info);
  if (table_.Rows() > rows) rootNames_.insert(name);
}

void Expansion::expandAt(int item, const std::string& path, const FileInfo& info) {
  if (info.kind == FileInfo::Kind::Folder)
    expandFolder(item, path, info);
  else
    expandFile(item, path);
}

void Expansion::excludeName(const std::string& path) {
  skippedEntries_.addExcludedName(path);
  worker_.IgnoreUnicode(path);
}

WalkFilters Expansion::filtersFor(const std::string& path, const FileInfo& info) const {
  WalkFilters filters = filters_;
  const FileInfo shelf =
      ownFiles_.shelf.empty() ? FileInfo() : services_.files.doGetInfo(ownFiles_.shelf);
  const bool isShelf =
      shelf.kind == FileInfo::Kind::Folder && info.kind == shelf.kind && info.inode == shelf.inode;
  filters.leaveOut = ownFiles_.leftOutBelow(path, isShelf);
  return filters;
}

std::string Expansion::itemName(int item, const std::string& path) const {
  const std::string& given = job_.vsContents.text(item, ContentsName);
  if (!given.empty()) return given;
  const std::string_view own = Paths::doGetFilePart(path);
  return own.empty() ? "root" : std::string(own);
}

void Expansion::expandFolder(int item, const std::string& path, const FileInfo& info) {
  if (filters_.earliest && info.modified < *filters_.earliest) return;

  const PlanTable::Link name = table_.addText(itemName(item, path));
  const PlanTable::Link shown = dropTopFolder_ ? PlanTable::NoLink : name;
  PlanTable::Folder folder{.parent = PlanTable::DiscRoot, .name = shown, .original = shown};
  folder.source = table_.addText(path);
  here_ = table_.addFolder(folder);

  PlanTable::Row row;
  row.type = RowType::Folder;
  row.itemFlag = true;
  row.modified = info.modified;
  row.dated = true;
  row.folder = PlanTable::DiscRoot;
  row.name = row.original = name;
  row.own = here_;
  table_.rows().push_back(row);
  ++bufferRows_;

  const bool descend = job_.vsContents.check(item, ContentsSubfolder) == Table::Check::Ticked;
  services_.walker.walk(path, descend, filtersFor(path, info), *this);
  open_.clear();
}

void Expansion::expandFile(int item, const std::string& path) {
  dropTopFolder_ = false;
  here_ = PlanTable::DiscRoot;
  fileItemName_ = itemName(item, path);
  fileItemPath_ = &path;
  // A file that is named is wanted, whatever it is; but a run cannot write a disc onto itself.
  WalkFilters filters = filters_;
  filters.leaveOut = ownFiles_.written;
  services_.walker.walkFile(path, filters, *this);
  fileItemPath_ = nullptr;
}

void Expansion::enterFolder(const WalkEntry& entry) {
  PlanTable::Folder folder{.parent = here_};
  folder.name = folder.original = table_.addText(entry.name);
  const PlanTable::Link link = table_.addFolder(folder);
  open_.push_back({table_.Rows(), link, entry.folder.size()});
  table_.rows().emplace_back();
  here_ = link;
}

bool Expansion::report(const WalkEntry& entry) {
  addReported(entry);
  return pause();
}

bool Expansion::pause() {
  services_.desktop.doYield();
  return !services_.state.StopAction;
}

void Expansion::addReported(const WalkEntry& entry) {
  if (entry.isFolder)
    addReportedFolder(entry);
  else if (!entry.holdable)
    excludeName(entry.path());
  else
    addReportedFile(entry);
}

bool Expansion::isOpen(const WalkEntry& entry) const {
  return !open_.empty() && open_.back().pathLength == entry.folder.size() &&
         table_.textOf(table_.folder(open_.back().link).name) == entry.name;
}

PlanTable::Row Expansion::rowOf(const WalkEntry& entry) const {
  PlanTable::Row row;
  row.type = entry.isFolder ? RowType::Folder : RowType::File;
  row.size = Fixed4(entry.isFolder ? 0 : entry.size);
  row.modified = entry.modified;
  row.dated = true;
  row.itemFlag = fileItemPath_ != nullptr;
  row.folder = here_;
  return row;
}

void Expansion::addReportedFolder(const WalkEntry& entry) {
  OpenFolder open{table_.Rows(), PlanTable::NoLink, 0};
  if (isOpen(entry)) {
    open = open_.back();
    open_.pop_back();
    here_ = table_.folder(open.link).parent;
  }
  if (!entry.holdable) {
    excludeName(entry.path());
    return;
  }
  if (open.link == PlanTable::NoLink) {
    PlanTable::Folder folder{.parent = here_};
    folder.name = folder.original = table_.addText(entry.name);
    open.link = table_.addFolder(folder);
    table_.rows().emplace_back();
  }
  PlanTable::Row row = rowOf(entry);
  row.name = row.original = table_.folder(open.link).name;
  row.own = open.link;
  table_.row(open.row) = row;
  countRow();
}

void Expansion::addReportedFile(const WalkEntry& entry) {
  if (plan_.IsDifferential && !passesDifferential(entry)) return;
  PlanTable::Row row = rowOf(entry);
  row.name = row.original =
      table_.addText(fileItemPath_ != nullptr ? std::string_view(fileItemName_) : entry.name);
  if (fileItemPath_ != nullptr) row.source = table_.addText(*fileItemPath_);
  table_.rows().push_back(row);
  plan_.TotalSize += row.size;
  countRow();
}

bool Expansion::passesDifferential(const WalkEntry& entry) const {
  FileInfo info;
  info.kind = FileInfo::Kind::File;
  info.size = Fixed4(entry.size);
  info.modified = entry.modified;
  info.modifiedNanoseconds = entry.modifiedNanoseconds;
  info.changed = entry.changed;
  info.changedNanoseconds = entry.changedNanoseconds;
  info.inode = entry.inode;
  return services_.archiveBits.doHasArchiveBit(entry.path(), info);
}

void Expansion::countRow() {
  ++bufferRows_;
  if (bufferRows_ + 1 > MaxTableRows)
    services_.state.StopAction = services_.state.LimitExceeded = true;
}

bool Expansion::skipped(WalkSkip reason, const std::string& path) {
  skippedEntries_.add(reason, path);
  return pause();
}

}  // namespace korvenal
