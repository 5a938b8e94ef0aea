#include "restore/FileRestore.h"

#include <cerrno>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr const char* CannotBeJoined = "File restore failed.";
constexpr const char* NameIsTaken = "Another restored file bears this name.";

bool isForbidden(const FileOutcome& outcome) {
  return outcome.code == EACCES || outcome.code == EPERM;
}

/// Alike for names that some file systems take for one.
std::size_t keyOf(const std::string& path) {
  return std::hash<std::string>()(Text::toUpper(path));
}

}  // namespace

FileRestore::FileRestore(const RestoreServices& services)
    : progress(services.progress(), services.desktop),
      services_(services),
      page_(services.page),
      existing_(services),
      claims_(services_),
      rows_(services.page) {}

void FileRestore::doBeginRestore() {
  rows_.clear();
  made_.clear();
  namesTaken_.clear();
  split_ = {};
  anyWritten_ = false;
}

bool FileRestore::isOver() const {
  return services_.state.StopAction || services_.state.TaskError != 0 || counts_.discGone;
}

bool FileRestore::isNeeded(int disc) const {
  const RestoreTree& tree = page_.vsRestore;
  for (int row = 1; row < tree.Rows(); ++row) {
    if (!rows_.isWanted(row) || tree.item(row).kind == RestoreKind::Folder) continue;
    const int from = row == split_.row ? split_.SplitNextPart : 1;
    if (from == 1 && tree.item(row).disc == disc) return true;
    if (rows_.hasPartOn(row, disc, from)) return true;
  }
  return false;
}

bool FileRestore::hasPartsInVain(int disc) const {
  for (int row = 1; row < page_.vsRestore.Rows(); ++row)
    if (rows_.isSelected(row) && !rows_.isWanted(row) && rows_.outcome(row) != Outcome::Restored &&
        rows_.hasPartOn(row, disc))
      return true;
  return false;
}

WantedCount FileRestore::doCountWanted(const DiscInHand& disc) {
  const RestoreTree& tree = page_.vsRestore;
  WantedCount count;
  const auto look = [&](const std::string& pathOnDisc, const Fixed4* plannedSize) {
    ++count.wanted;
    const FileInfo info = services_.files.doGetInfo(disc.pathOf(pathOnDisc));
    if (info.kind != FileInfo::Kind::File) return;
    ++count.found;
    progress.RestoreBytesTotal += plannedSize != nullptr ? *plannedSize : info.size;
  };
  for (int row = 1; row < tree.Rows(); ++row) {
    services_.desktop.doYield();
    if (!rows_.isWanted(row)) continue;
    const RestoreTree::Item& item = tree.item(row);
    if (item.kind == RestoreKind::File && item.disc == disc.number)
      look(std::string(tree.nameOnDisc(row)), &item.size);
    const int from = row == split_.row ? split_.SplitNextPart : 1;
    for (int part = from; part <= static_cast<int>(item.knownParts); ++part)
      if (tree.partDisc(row, part) == disc.number) look(tree.partOnDisc(row, part), nullptr);
  }
  return count;
}

RestoreCounts FileRestore::doRestoreFiles(const DiscInHand& disc, TargetFolder& target,
                                          std::function<bool()> isThere) {
  disc_ = disc;
  target_ = &target;
  isThere_ = std::move(isThere);
  counts_ = {};
  settled_.clear();
  const std::string list = claims_.doBeginDisc(disc);
  isPaddingUnknown_ = !list.empty();
  if (isPaddingUnknown_) {
    doCountError("The list of files that were not saved cannot be read.",
                 Paths::onDrive(disc.letter, Paths::doGetFilePart(list)));
  }
  if (isSplitOpen()) doRestoreParts();
  const RestoreTree& tree = page_.vsRestore;
  for (int row = 1; row < tree.Rows() && !isOver(); ++row) {
    if (tree.item(row).disc == disc.number && row != split_.row && rows_.isWanted(row))
      doRestoreRow(row);
    services_.desktop.doYield();
  }
  target_ = nullptr;
  isThere_ = nullptr;
  return counts_;
}

void FileRestore::doRestoreRow(int row) {
  progress.RestoreBytesNext = progress.RestoreBytesDone;
  switch (page_.vsRestore.item(row).kind) {
    case RestoreKind::Folder:
      if (!page_.OnlyRestoreFile) doRestoreFolder(row);
      break;
    case RestoreKind::File:
      doRestoreFile(row);
      break;
    case RestoreKind::SplitFile:
      doRestoreSplitFile(row);
      break;
    case RestoreKind::None:
      break;
  }
}

RestoredFile FileRestore::targetOf(int row) const {
  const RestoreTree& tree = page_.vsRestore;
  RestoredFile file;
  file.path = page_.OnlyRestoreFile ? tree.name(row) : tree.doGetOriginPath(row);
  if (file.path.ends_with(Paths::DiscSeparator)) file.path.pop_back();
  file.shown = Paths::withEnd(page_.txRestoreTo) + Text::replaceAll(file.path, "\\", "/");
  file.size = tree.item(row).size;
  file.modified = tree.cellData(row, RestoreModified);
  return file;
}

/// What this restore wrote itself is no existing file.
bool FileRestore::mayWrite(int row, const RestoredFile& file) {
  if (rows_.outcome(row) == Outcome::Unsafe) return true;
  // What may be padding takes the place of nothing.
  if (isPaddingUnknown_ && target_->doGetInfo(file.path).kind == FileInfo::Kind::File) return false;
  return existing_.mayWrite(*target_, file);
}

/// True when a file that this restore brought back stands at the name and nobody would be asked.
/// Names meet where files come back without their folders or the target knows no case.
bool FileRestore::isNameTaken(int row, const RestoredFile& file) const {
  return existing_.replacesUnasked() && rows_.outcome(row) != Outcome::Unsafe &&
         namesTaken_.contains(keyOf(file.path)) &&
         target_->doGetInfo(file.path).kind == FileInfo::Kind::File;
}

void FileRestore::noteFolders(int row, const std::string& path) {
  made_.note(*target_, path, std::string(page_.vsRestore.nameOnDisc(row)),
             [this](const std::string& folder) {
               return services_.files.doGetInfo(disc_.pathOf(folder));
             });
}

void FileRestore::settle(int row, Outcome outcome) {
  rows_.set(row, outcome);
  settled_.push_back(row);
}

void FileRestore::doRestoreFolder(int row) {
  const RestoredFile folder = targetOf(row);
  FileOutcome outcome;
  if (target_->doGetInfo(folder.path).kind != FileInfo::Kind::Folder)
    outcome = target_->doCreateFolderPath(folder.path);
  noteFolders(row, folder.path);
  if (outcome) {
    ++counts_.folders;
    settle(row, Outcome::Restored);
  } else if (isRowsOwnFault(outcome, outcome.text, folder.shown)) {
    settle(row, Outcome::Failed);
  }
}

void FileRestore::doRestoreFile(int row) {
  const std::string nameOnDisc(page_.vsRestore.nameOnDisc(row));
  const std::string source = disc_.pathOf(nameOnDisc);
  RestoredFile file = targetOf(row);
  const FileInfo info = services_.files.doGetInfo(source);
  if (info.kind != FileInfo::Kind::File) {
    if (isDiscGone()) return;
    doCountError("Backup file not found.", Paths::onDrive(disc_.letter, nameOnDisc));
    settle(row, Outcome::Failed);
    return;
  }
  progress.RestoreBytesNext += info.size;
  if (const std::string fault =
          claims_.doFindFault(nameOnDisc, page_.vsRestore.item(row).size, info.size);
      !fault.empty()) {
    doCountError(fault, file.shown);
    settle(row, Outcome::Failed);
    progress.doFinishFile();
    return;
  }
  file.size = info.size;
  file.modified = Dates::digits(info.modified);
  if (isNameTaken(row, file)) {
    doCountError(NameIsTaken, file.shown);
    settle(row, Outcome::Failed);
    progress.doFinishFile();
    return;
  }
  const bool write = mayWrite(row, file);
  if (services_.state.StopAction) return;
  if (write) {
    doCopyFile(row, source, file);
  } else {
    ++counts_.skipped;
    settle(row, Outcome::Skipped);
  }
  progress.doFinishFile();
}

void FileRestore::doCopyFile(int row, const std::string& source, const RestoredFile& file) {
  progress.doShowFile("Restoring - " + file.shown);
  const FileOutcome outcome = target_->doCopyFileProgress(source, file.path, copyProgress());
  noteFolders(row, file.path);
  if (outcome) {
    ++counts_.restored;
    anyWritten_ = true;
    namesTaken_.insert(keyOf(file.path));
    settle(row, Outcome::Restored);
  } else if (isRowsOwnFault(outcome, outcome.text + ".", file.shown)) {
    settle(row, Outcome::Failed);
  }
}

void FileRestore::doRestoreSplitFile(int row) {
  const RestoreTree& tree = page_.vsRestore;
  const RestoreTree::Item& item = tree.item(row);
  // Only one split file can be open. An index that begins a second one gives up the first.
  if (isSplitOpen()) doGiveUpSplitFile(CannotBeJoined);
  const RestoredFile file = targetOf(row);
  if (isNameTaken(row, file)) {
    doCountError(NameIsTaken, file.shown);
    settle(row, Outcome::Failed);
    return;
  }
  const bool write = mayWrite(row, file);
  if (services_.state.StopAction) return;
  if (!write) {
    for (int part = 1; part <= static_cast<int>(item.knownParts); ++part)
      if (tree.partDisc(row, part) == disc_.number) ++counts_.skipped;
    settle(row, Outcome::Skipped);
    return;
  }
  split_.row = row;
  split_.target = file;
  split_.SplitBaseName = tree.partBaseName(row);
  split_.SplitPartCount = static_cast<int>(item.parts);
  split_.SplitLastDisc = item.lastDisc;
  if (split_.SplitPartCount == 0)
    doGiveUpSplitFile(CannotBeJoined);
  else
    doRestoreParts();
}

void FileRestore::doRestoreParts() {
  while (doRestorePart() && !isOver()) {
  }
}

/// True when the part was joined and another follows.
bool FileRestore::doRestorePart() {
  const int part = split_.SplitNextPart;
  const std::string discPath = split_.SplitBaseName + "." + Text::zeroPadded(part, 3);
  const FileInfo info = services_.files.doGetInfo(disc_.pathOf(discPath));
  if (info.kind != FileInfo::Kind::File) {
    doMissPart();
    return false;
  }
  progress.RestoreBytesNext += info.size;
  const std::string fault =
      claims_.doFindFault(discPath, page_.vsRestore.partSize(split_.row, part), info.size);
  const FileOutcome outcome = fault.empty() ? doAppendPart(disc_.pathOf(discPath)) : FileOutcome();
  if (!fault.empty()) {
    doGiveUpSplitFile(fault);
  } else if (outcome) {
    split_.joined += info.size;
    if (++split_.SplitNextPart > split_.SplitPartCount) doFinishSplitFile();
  } else if (isRowsOwnFault(outcome, outcome.text, split_.target.shown)) {
    doGiveUpSplitFile({});
  }
  progress.doFinishFile();
  return outcome && isSplitOpen();
}

FileOutcome FileRestore::doAppendPart(const std::string& source) {
  progress.doShowFile("Restoring - " + split_.target.shown);
  FileOutcome outcome;
  if (split_.file == nullptr) {
    split_.file = target_->doBeginJoinedFile(split_.target.path, outcome);
    noteFolders(split_.row, split_.target.path);
  }
  if (split_.file == nullptr) return outcome;
  return split_.file->doAppendFileProgress(source, copyProgress());
}

void FileRestore::doFinishSplitFile() {
  // Where the index tells not each part, their sum has to do.
  const RestoreTree::Item& item = page_.vsRestore.item(split_.row);
  if (item.knownParts < item.parts && split_.joined != item.size) {
    doGiveUpSplitFile(DiscClaims::WrongSize);
    return;
  }
  FileOutcome outcome;
  services_.desktop.doAside([&] { outcome = split_.file->finish(); });
  if (!outcome) {
    doTellFault(outcome, outcome.text, split_.target.shown);
    doGiveUpSplitFile({});
    return;
  }
  ++counts_.restored;
  anyWritten_ = true;
  namesTaken_.insert(keyOf(split_.target.path));
  settle(split_.row, Outcome::Restored);
  split_ = {};
}

void FileRestore::doMissPart() {
  const int disc = page_.vsRestore.partDisc(split_.row, split_.SplitNextPart);
  // It may lie on a later disc.
  if (isDiscGone() || (disc != disc_.number && split_.SplitLastDisc > disc_.number)) return;
  doGiveUpSplitFile(CannotBeJoined);
}

/// Without a message the error was told before.
void FileRestore::doGiveUpSplitFile(const std::string& message) {
  if (!message.empty()) doCountError(message, split_.target.shown);
  if (split_.file != nullptr) split_.file->remove();
  settle(split_.row, Outcome::Failed);
  split_ = {};
}

/// A joined file was waited for by itself.
void FileRestore::doDistrustDisc() {
  for (const int row : settled_)
    if (rows_.outcome(row) == Outcome::Restored &&
        page_.vsRestore.item(row).kind == RestoreKind::File)
      rows_.set(row, Outcome::Unsafe);
}

int FileRestore::doGiveUpOpenRows() {
  int lost = 0;
  disc_ = {};
  for (int row = 1; row < page_.vsRestore.Rows(); ++row) {
    services_.desktop.doYield();
    if (!rows_.isSelectedFile(row) || !rows_.isWanted(row)) continue;
    if (row == split_.row && split_.file != nullptr) split_.file->remove();
    doAddErrorRow(CannotBeJoined, targetOf(row).shown);
    rows_.set(row, Outcome::Failed);
    ++lost;
  }
  split_ = {};
  return lost;
}

void FileRestore::doEndRun(TargetFolder* target) {
  if (split_.file != nullptr && !split_.told) {
    split_.told = true;
    doAddErrorRow("Not whole yet, left under the name " + split_.file->temporaryName() + ".",
                  split_.target.shown);
  }
  if (target != nullptr) made_.dress(*target, services_.desktop);
}

bool FileRestore::isDiscGone() {
  if (!isThere_()) counts_.discGone = true;
  return counts_.discGone;
}

/// A target whose root is closed may hold folders that are open.
bool FileRestore::isTargetClosed(const FileOutcome& outcome) {
  const FileOutcome test = target_->doTestWriting();
  if (test || (isForbidden(test) && (anyWritten_ || !isForbidden(outcome)))) return false;
  counts_.targetFault = test.text;
  return true;
}

/// Tells a failure. False when it lies not in the row alone: the work with the disc ends, and the
/// row is taken up again when the restore goes on.
bool FileRestore::isRowsOwnFault(const FileOutcome& outcome, const std::string& text,
                                 const std::string& file) {
  if (services_.state.StopAction) {
    doAddErrorRow("Stop by user.", file);
    return false;
  }
  if (isDiscGone()) return false;
  doTellFault(outcome, text, file);
  return services_.state.TaskError == 0;
}

void FileRestore::doTellFault(const FileOutcome& outcome, const std::string& text,
                              const std::string& file) {
  doCountError(text, file);
  counts_.diskFull = outcome.code == FileOutcome::DiskFull;
  if (counts_.diskFull || isTargetClosed(outcome)) services_.state.TaskError = -1;
}

void FileRestore::doCountError(const std::string& message, const std::string& file) {
  doAddErrorRow(message, file);
  ++counts_.errors;
}

void FileRestore::doAddErrorRow(const std::string& message, const std::string& file) {
  const std::string drive = disc_.letter != 0 ? std::string(1, disc_.letter) + ":" : "";
  services_.grids.vsError[RestorePageIndex].addRow({drive, "", disc_.label, message, file});
}

CopyProgress FileRestore::copyProgress() {
  return [this](std::int64_t pieces) {
    progress.doRestoreProgress(pieces);
    return services_.state.StopAction;
  };
}

}  // namespace korvenal
