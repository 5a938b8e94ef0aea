#include "restore/RestoreRig.h"

#include <algorithm>
#include <cerrno>
#include <set>

namespace korvenal::test {

namespace {

class MemoryStream : public FileStream {
 public:
  MemoryStream(FileInfo info, const std::string& bytes) : info_(info), bytes_(bytes) {}
  const FileInfo& info() const override { return info_; }
  std::int64_t read(std::int64_t offset, char* buffer, std::size_t bytes) override {
    if (offset >= static_cast<std::int64_t>(bytes_.size())) return 0;
    return static_cast<std::int64_t>(bytes_.copy(buffer, bytes, static_cast<std::size_t>(offset)));
  }

 private:
  FileInfo info_;
  std::string bytes_;
};

std::string asFolder(std::string_view path) {
  std::string folder(path);
  if (!folder.empty() && !folder.ends_with('\\')) folder += '\\';
  return folder;
}

}  // namespace

const MemoryDiscs::Content* MemoryDiscs::inDrive(char letter) const {
  const auto drive = engine_.drives.find(letter);
  if (drive == engine_.drives.end() || drive->second.open || !drive->second.disc) return nullptr;
  const auto content = contents.find(drive->second.disc->label);
  return content == contents.end() ? nullptr : &content->second;
}

FileInfo MemoryDiscs::doGetInfo(DiscTree tree, std::string_view discPath) {
  FileInfo info;
  const Content* content = inDrive(tree.letter);
  if (content == nullptr) return info;
  info.modified = modified;
  info.permissions = 0644;
  const auto file = content->find(std::string(discPath));
  const auto inside = content->lower_bound(asFolder(discPath));
  if (file != content->end()) {
    info.kind = FileInfo::Kind::File;
    info.size = Fixed4(static_cast<std::int64_t>(file->second.size()));
  } else if (discPath.empty() ||
             (inside != content->end() && inside->first.starts_with(asFolder(discPath)))) {
    info.kind = FileInfo::Kind::Folder;
    info.permissions = 0755;
  }
  return info;
}

std::optional<VolumeInfo> MemoryDiscs::doGetVolumeInfo(char letter) {
  if (inDrive(letter) == nullptr) return std::nullopt;
  VolumeInfo info;
  info.label = engine_.drives[letter].disc->label;
  return info;
}

/// All discs are of one session, burned before sessions bore an identity.
std::vector<DiscSession> MemoryDiscs::sessions(char letter) {
  if (inDrive(letter) == nullptr) return {};
  return {{.start = 0, .label = engine_.drives[letter].disc->label, .identity = {}}};
}

std::vector<std::string> MemoryDiscs::listFolder(DiscTree tree, std::string_view discPath) {
  std::set<std::string> names;
  const std::string folder = asFolder(discPath);
  if (const Content* content = inDrive(tree.letter))
    for (const auto& [path, bytes] : *content)
      if (path.starts_with(folder))
        names.insert(path.substr(folder.size(), path.find('\\', folder.size()) - folder.size()));
  return {names.begin(), names.end()};
}

std::unique_ptr<FileStream> MemoryDiscs::open(DiscTree tree, std::string_view discPath) {
  const FileInfo info = doGetInfo(tree, discPath);
  if (info.kind != FileInfo::Kind::File) return nullptr;
  return std::make_unique<MemoryStream>(info, inDrive(tree.letter)->at(std::string(discPath)));
}

namespace {

class BreakableJoinedFile : public JoinedFile {
 public:
  BreakableJoinedFile(std::unique_ptr<JoinedFile> good, BreakableTargets& targets)
      : good_(std::move(good)), targets_(targets) {}
  FileOutcome doAppendFileProgress(const std::string& source,
                                   const CopyProgress& progress) override {
    if (++targets_.appends == targets_.failingAppend) return {EIO, "Bad"};
    return good_->doAppendFileProgress(source, progress);
  }
  FileOutcome finish() override { return good_->finish(); }
  void remove() override { good_->remove(); }
  std::string temporaryName() const override { return good_->temporaryName(); }

 private:
  std::unique_ptr<JoinedFile> good_;
  BreakableTargets& targets_;
};

class BreakableTarget : public TargetFolder {
 public:
  BreakableTarget(std::unique_ptr<TargetFolder> good, BreakableTargets& targets)
      : good_(std::move(good)), targets_(targets) {}
  FileInfo doGetInfo(const std::string& path) const override { return good_->doGetInfo(path); }
  bool isInUse(const std::string& path) const override { return good_->isInUse(path); }
  FileOutcome doCreateFolderPath(const std::string& path) override {
    return good_->doCreateFolderPath(path);
  }
  FileOutcome doCopyFileProgress(const std::string& source, const std::string& path,
                                 const CopyProgress& progress) override {
    if (++targets_.copies == targets_.failingCopy) return {FileOutcome::DiskFull, "Full"};
    return good_->doCopyFileProgress(source, path, progress);
  }
  std::unique_ptr<JoinedFile> doBeginJoinedFile(const std::string& path,
                                                FileOutcome& outcome) override {
    auto file = good_->doBeginJoinedFile(path, outcome);
    if (file == nullptr) return nullptr;
    return std::make_unique<BreakableJoinedFile>(std::move(file), targets_);
  }
  FileOutcome doSync() override {
    if (++targets_.syncs == targets_.failingSync) return {EIO, "Lost"};
    return good_->doSync();
  }
  FileOutcome doTestWriting() override { return good_->doTestWriting(); }
  std::vector<std::string> takeMadeFolders() override { return good_->takeMadeFolders(); }
  void doDressFolder(const std::string& path, const FileInfo& look) override {
    good_->doDressFolder(path, look);
  }

 private:
  std::unique_ptr<TargetFolder> good_;
  BreakableTargets& targets_;
};

}  // namespace

std::unique_ptr<TargetFolder> BreakableTargets::open(const std::string& path) {
  auto folder = good_.open(path);
  if (folder == nullptr) return nullptr;
  return std::make_unique<BreakableTarget>(std::move(folder), *this);
}

RestoreRig::RestoreRig()
    : workspace(Workspace::below(folder.path(), folder / "BIN/", folder.path())),
      profile(files, folder / "settings"),
      grids(state, desktop, clock, files, workspace),
      records(files, desktop, grids, workspace),
      opening({state, desktop, files, archive, settings, devices, workspace}, page, selection,
              [this](int reason, DiscRequest& request) {
                prompts.push_back("index");
                if (onPrompt) onPrompt(reason, request);
              }),
      run({state, engine, desktop, clock, files, archive, targets, grids, runPage, records,
           settings, devices, workspace, page},
          {.doEnsureDevice = [](bool) { return true; },
           .doAskLoadDisc =
               [this](int reason, DiscRequest& request) {
                 std::string wanted = std::to_string(reason) + ":";
                 for (int k = request.RestoreDiscIndex + 1; request.restoreDisc(k) != 0; ++k)
                   wanted += " " + std::to_string(request.restoreDisc(k));
                 prompts.push_back(wanted);
                 if (onPrompt)
                   onPrompt(reason, request);
                 else
                   insertDisc(request.restoreDisc(request.RestoreDiscIndex + 1));
               },
           .doBrowseTarget = {},
           .doShowSelection = {}}) {
  workspace.TempFolder = folder.makeFolder("temp") + "/";
  page.txRestoreTo = folder.makeFolder("target");
  settings.PlaySound = false;
  devices.SingleDrive = "V";
  devices.doBuildDriveLetters();
  engine.drives['V'] = {};
}

void RestoreRig::insert(char letter, const std::string& label) {
  FakeDisc disc;
  disc.label = label;
  engine.drives[letter] = {.disc = disc};
}

void RestoreRig::open(const std::string& text) {
  desktop.answers.push_back(Answer::No);
  opening.doOpenIndexFile(folder.write("_KORVEN{Photos(2026-11-22-10-00-F)}.bdx", text));
}

void RestoreRig::openAll(const IndexLines& index) {
  open(index.text());
  selection.doSelectAllRows();
}

bool RestoreRig::hasEvent(const std::string& text) const {
  const Table& events = grids.vsEvent[1];
  for (int row = 1; row < events.Rows(); ++row)
    if (events.text(row, 1) == text) return true;
  return false;
}

std::vector<std::string> RestoreRig::errors() const {
  std::vector<std::string> found;
  const Table& table = grids.vsError[1];
  for (int row = 1; row < table.Rows(); ++row)
    found.push_back(table.text(row, 2) + "|" + table.text(row, 3) + "|" + table.text(row, 4));
  return found;
}

}  // namespace korvenal::test
