#include "restore/FileRestore.h"

#include <algorithm>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

FileRestore::FileRestore(const RestoreServices& services)
    : progress(services.progress(), services.desktop),
      services_(services),
      page_(services.page),
      existing_(services),
      claims_(services) {}

void FileRestore::doForgetSplitFile() {
  split_ = {};
  begun_.clear();
}

bool FileRestore::isSelected(int row) const {
  const RestoreCheck check = page_.vsRestore.check(row);
  return check == RestoreCheck::Checked ||
         (check == RestoreCheck::Partly && !page_.OnlyRestoreFile);
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
    if (!isSelected(row)) continue;
    const RestoreTree::Item& item = tree.item(row);
    if (item.kind == RestoreKind::File && item.disc == disc.number)
      look(std::string(tree.nameOnDisc(row)), &item.size);
    for (int part = 1; part <= static_cast<int>(item.knownParts); ++part)
      if (tree.partDisc(row, part) == disc.number) look(tree.partOnDisc(row, part), nullptr);
  }
  return count;
}

RestoreCounts FileRestore::doRestoreFiles(const DiscInHand& disc, TargetFolder& target) {
  disc_ = disc;
  target_ = &target;
  counts_ = {};
  if (const std::string list = claims_.doBeginDisc(disc); !list.empty()) {
    doAddErrorRow("The list of files that were not saved cannot be read.", list);
    ++counts_.errors;
  }
  doTellLostFiles();
  if (split_.SplitNextPart > 0) doRestoreParts(split_.SplitNextPart);
  // A file that goes on on the next disc has this whole disc to itself.
  const bool wholeDiscIsSplitFile = split_.SplitNextPart > 0;
  const RestoreTree& tree = page_.vsRestore;
  for (int row = 1; row < tree.Rows() && !wholeDiscIsSplitFile && !isOver(); ++row) {
    if (tree.item(row).disc == disc.number && isSelected(row)) doRestoreRow(row);
    services_.desktop.doYield();
  }
  target_ = nullptr;
  return counts_;
}

/// True when parts of a split file are wanted from the disc that nothing can be joined with.
bool FileRestore::isLostOn(int row, int disc) const {
  const RestoreTree& tree = page_.vsRestore;
  const RestoreTree::Item& item = tree.item(row);
  if (item.kind != RestoreKind::SplitFile || item.disc == disc || !isSelected(row)) return false;
  if (split_.SplitNextPart > 0 && split_.row == row) return false;
  for (int part = 1; part <= static_cast<int>(item.knownParts); ++part)
    if (tree.partDisc(row, part) == disc) return true;
  return false;
}

/// A file that was open when the last run stopped is not joined any more, and one that failed has
/// more parts on later discs. Neither may keep its discs wanted for ever, or pass in silence.
void FileRestore::doTellLostFiles() {
  const RestoreTree& tree = page_.vsRestore;
  const auto& discs = page_.RestoreDiscList;
  counts_.onlyLostParts = split_.SplitNextPart == 0;
  for (int row = 1; row < tree.Rows(); ++row) {
    const int first = tree.item(row).disc;
    if (tree.item(row).kind != RestoreKind::Folder && first == disc_.number && isSelected(row))
      counts_.onlyLostParts = false;
    if (!isLostOn(row, disc_.number)) continue;
    // Its first disc may still come.
    const bool comes =
        std::find(discs.begin() + page_.RestoreDiscIndex, discs.end(), first) != discs.end();
    if (comes || !begun_.insert(row).second) continue;
    doAddErrorRow("File restore failed.", targetOf(row).shown);
    ++counts_.errors;
  }
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

void FileRestore::doRestoreFolder(int row) {
  const RestoredFile folder = targetOf(row);
  if (target_->doGetInfo(folder.path).kind != FileInfo::Kind::Folder) {
    const FileOutcome outcome = target_->doCreateFolderPath(folder.path);
    if (!outcome) {
      doCountFailure(outcome, outcome.text, folder.shown);
      return;
    }
  }
  ++counts_.folders;
}

void FileRestore::doRestoreFile(int row) {
  const std::string nameOnDisc(page_.vsRestore.nameOnDisc(row));
  const std::string source = disc_.pathOf(nameOnDisc);
  RestoredFile file = targetOf(row);
  const FileInfo info = services_.files.doGetInfo(source);
  if (info.kind != FileInfo::Kind::File) {
    doAddErrorRow("Backup file not found.", Paths::onDrive(disc_.letter, nameOnDisc));
    ++counts_.errors;
    return;
  }
  progress.RestoreBytesNext += info.size;
  if (const std::string fault =
          claims_.doFindFault(nameOnDisc, page_.vsRestore.item(row).size, info.size);
      !fault.empty()) {
    doAddErrorRow(fault, file.shown);
    ++counts_.errors;
    progress.doFinishFile();
    return;
  }
  file.size = info.size;
  file.modified = Dates::digits(info.modified);
  const bool write = existing_.mayWrite(*target_, file);
  if (services_.state.StopAction) return;
  if (write) {
    progress.doShowFile("Restoring - " + file.shown);
    const FileOutcome outcome = target_->doCopyFileProgress(source, file.path, copyProgress());
    if (outcome)
      ++counts_.restored;
    else
      doCountFailure(outcome, outcome.text + ".", file.shown);
  } else {
    ++counts_.skipped;
  }
  progress.doFinishFile();
}

void FileRestore::doRestoreSplitFile(int row) {
  const RestoreTree& tree = page_.vsRestore;
  const RestoreTree::Item& item = tree.item(row);
  // Only one split file can be open. An index that begins a second one gives up the first.
  if (split_.SplitNextPart > 0 && split_.SplitWrite) {
    doAddErrorRow("File restore failed.", split_.target.shown);
    ++counts_.errors;
  }
  split_ = {};
  split_.row = row;
  begun_.insert(row);
  split_.target = targetOf(row);
  split_.SplitWrite = existing_.mayWrite(*target_, split_.target);
  if (services_.state.StopAction) return;
  split_.SplitBaseName = tree.partBaseName(row);
  split_.SplitPartCount = static_cast<int>(item.parts);
  split_.SplitLastDisc = item.lastDisc;
  if (split_.SplitPartCount == 0) {
    doAddErrorRow("File restore failed.", split_.target.shown);
    ++counts_.errors;
  }
  doRestoreParts(1);
}

void FileRestore::doRestoreParts(int from) {
  for (int part = from; part <= split_.SplitPartCount; ++part) {
    const PartResult result = doRestorePart(part);
    if (result == PartResult::Ended || isOver()) return;
  }
  split_.SplitNextPart = 0;
}

FileRestore::PartResult FileRestore::doRestorePart(int part) {
  const std::string source = disc_.pathOf(split_.SplitBaseName + "." + Text::zeroPadded(part, 3));
  const FileInfo info = services_.files.doGetInfo(source);
  if (info.kind != FileInfo::Kind::File) return doMissPart(part);
  progress.RestoreBytesNext += info.size;
  PartResult result = PartResult::Done;
  const std::string fault =
      claims_.doFindFault(split_.SplitBaseName + "." + Text::zeroPadded(part, 3),
                          page_.vsRestore.partSize(split_.row, part), info.size);
  if (split_.SplitWrite)
    result = fault.empty() ? doAppendPart(part, source) : doLosePart(fault);
  else
    ++counts_.skipped;
  progress.doFinishFile();
  return result;
}

FileRestore::PartResult FileRestore::doAppendPart(int part, const std::string& source) {
  progress.doShowFile("Restoring - " + split_.target.shown);
  const FileOutcome outcome = appendTo(source, part == 1);
  if (!outcome) {
    split_.SplitNextPart = 0;
    doCountFailure(outcome, outcome.text, split_.target.shown);
    return PartResult::Ended;
  }
  if (part == split_.SplitPartCount) ++counts_.restored;
  return PartResult::Done;
}

/// Without one of its parts the file is none.
FileRestore::PartResult FileRestore::doLosePart(const std::string& fault) {
  split_.SplitNextPart = 0;
  doAddErrorRow(fault, split_.target.shown);
  ++counts_.errors;
  return PartResult::Ended;
}

FileOutcome FileRestore::appendTo(const std::string& source, bool first) {
  // The file that stood there goes only now that its replacement is at hand.
  const bool stands =
      first && target_->doGetInfo(split_.target.path).kind != FileInfo::Kind::Missing;
  if (stands)
    if (FileOutcome outcome = target_->doDeleteFile(split_.target.path); !outcome) return outcome;
  return target_->doAppendFileProgress(source, split_.target.path, copyProgress());
}

FileRestore::PartResult FileRestore::doMissPart(int part) {
  if (split_.SplitLastDisc > disc_.number) {
    split_.SplitNextPart = part;  // it lies on a later disc
    return PartResult::Ended;
  }
  split_.SplitNextPart = 0;
  if (split_.SplitWrite) {
    doAddErrorRow("File restore failed.", split_.target.shown);
    ++counts_.errors;
  } else {
    ++counts_.skipped;
  }
  return PartResult::Ended;
}

void FileRestore::doCountFailure(const FileOutcome& outcome, const std::string& text,
                                 const std::string& file) {
  if (services_.state.StopAction) {
    doAddErrorRow("Stop by user.", file);
    return;
  }
  doAddErrorRow(text, file);
  ++counts_.errors;
  if (outcome.code != FileOutcome::DiskFull) return;
  counts_.diskFull = true;
  services_.state.TaskError = -1;
}

void FileRestore::doAddErrorRow(const std::string& message, const std::string& file) {
  services_.grids.vsError[RestorePageIndex].addRow(
      {std::string(1, disc_.letter) + ":", "", disc_.label, message, file});
}

CopyProgress FileRestore::copyProgress() {
  return [this](std::int64_t pieces) {
    progress.doRestoreProgress(pieces);
    return services_.state.StopAction;
  };
}

}  // namespace korvenal
