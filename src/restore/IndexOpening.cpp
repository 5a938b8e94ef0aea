#include "restore/IndexOpening.h"

#include <algorithm>
#include <limits>

#include "core/DateText.h"
#include "core/SizeText.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "restore/IndexNames.h"
#include "restore/IndexReading.h"
#include "restore/IndexSearch.h"

namespace korvenal {

namespace {

constexpr const char* FormatError = "Backup index file format error.";

bool isDifferentialName(std::string_view fileName) {
  constexpr std::size_t FromEnd = 7;
  return fileName.size() >= FromEnd && fileName[fileName.size() - FromEnd] == 'D';
}

RestoreIcons iconsFor(int rows) {
  if (rows < 1024) return RestoreIcons::ByType;
  return rows > 4096 ? RestoreIcons::None : RestoreIcons::Stock;
}

int progressStep(int rows) {
  return rows > 20000 ? 500 : rows > 2000 ? 200 : 100;
}

}  // namespace

IndexOpening::IndexOpening(const IndexServices& services, RestorePage& page,
                           RestoreSelection& selection, AskLoadDisc askLoadDisc)
    : services_(services),
      page_(page),
      selection_(selection),
      askLoadDisc_(std::move(askLoadDisc)) {}

bool IndexOpening::doReadBackupIndex(bool quiet) {
  if (services_.state.ActionRunning) return false;
  const FlagScope running(services_.state.ActionRunning);
  vsTXT.clear();
  if (doFindBackupIndex(quiet) == Search::AskAgain) {
    if (!doAskForFirstDisc()) return false;
    doFindBackupIndex(false);
  }
  if (!vsTXT.hasRows()) return false;
  const bool filled = doFillRestoreTable();
  doAfterOpening();
  return filled;
}

bool IndexOpening::doOpenIndexFile(const std::string& path) {
  if (services_.state.ActionRunning) return false;
  const FlagScope running(services_.state.ActionRunning);
  vsTXT.clear();
  if (!doReadLOG2(path)) return false;
  const bool filled = doFillRestoreTable();
  doAfterOpening();
  return filled;
}

bool IndexOpening::doPickIndexFile() {
  if (services_.state.ActionRunning) return false;
  const bool wasIgnoring = services_.state.IgnoreEvents;
  services_.state.IgnoreEvents = true;
  const std::string path =
      services_.desktop.doAskOpenFile({.title = "Open Backup Index",
                                       .filterName = "Backup Index(*.bdx)",
                                       .pattern = "*.bdx",
                                       .folder = services_.workspace.homeFolder,
                                       .fileName = {}});
  services_.state.IgnoreEvents = wasIgnoring;
  return !path.empty() && doOpenIndexFile(path);
}

FoundIndexes IndexOpening::doSearchIndexFiles() const {
  std::string letters;
  for (int i = 0; i < services_.devices.driveCount(); ++i) letters += services_.devices.letter(i);
  return findIndexes(services_.files, letters, [this] { services_.desktop.doYield(); });
}

IndexOpening::Search IndexOpening::doFindBackupIndex(bool quiet) {
  const FlagScope loading(page_.IndexLoading);
  FoundIndexes indexes;
  {
    const WaitPointer wait(services_.desktop);
    indexes = doSearchIndexFiles();
  }
  if (indexes.empty()) {
    if (quiet) return Search::AskAgain;
    services_.desktop.doShowMessage(
        {.text = "Backup index file not found in drive (" + services_.devices.DriveLetters + ").",
         .title = "Read Index",
         .icon = MessageIcon::Stop});
    return Search::Done;
  }
  if (indexes.size() > 1) {
    doChooseIndex(indexes);
    return Search::Done;
  }
  const std::string before = page_.vsBackupIndex;
  page_.vsBackupIndex = "Open backup index in (" + indexes[0].drive + ")...";
  services_.desktop.doYield();
  doReadLOG2(indexes[0].path);
  page_.vsBackupIndex = before;
  return Search::Done;
}

void IndexOpening::doChooseIndex(const FoundIndexes& indexes) {
  const bool wasIgnoring = services_.state.IgnoreEvents;
  services_.state.IgnoreEvents = true;
  frmReadLog form(indexes, [this](const FoundIndex& found) { doReadLOG2(found.path); });
  services_.desktop.doShowModal(form);
  services_.state.IgnoreEvents = wasIgnoring;
}

bool IndexOpening::doAskForFirstDisc() {
  if (services_.state.IgnoreEvents) return false;  // a dialog is open already
  services_.state.StopAction = false;
  services_.state.WorkerMode = WorkerReadIndex;
  DiscRequest request;
  request.FirstPrompt = true;
  askLoadDisc_(0, request);
  if (services_.state.StopAction) return false;
  services_.desktop.doYield();
  vsTXT.clear();
  return true;
}

bool IndexOpening::doReadLOG2(const std::string& path) {
  const WaitPointer wait(services_.desktop);
  vsTXT.clear();
  if (!services_.files.doFileExists(path)) return false;
  if (doLoadIndexFile(path)) return true;
  doFormatError();
  return false;
}

bool IndexOpening::doLoadIndexFile(const std::string& path) {
  const IndexReading reading(services_.desktop, services_.files, services_.archive,
                             services_.workspace);
  std::optional<IndexReading::Content> index = reading.doRead(path);
  if (!index) return false;
  opened_ = {path, std::move(index->name)};
  return vsTXT.load(std::move(index->text), [this] { services_.desktop.doYield(); });
}

void IndexOpening::takeOrigin(const IndexHeader& header) {
  page_.IndexPath = opened_.path;
  page_.IndexName = Paths::doGetFilePart(opened_.name);
  page_.IsDifferential = isDifferentialName(opened_.name);
  page_.setName = IndexNames::setName(Paths::doGetFilePart(opened_.path));
  char type = IndexNames::typeOf(Paths::doGetFilePart(opened_.path));
  if (type == 0) type = IndexNames::typeOf(page_.IndexName);
  page_.identity = SetIdentity::of(header.created, type, header.jobName);
  page_.isSetUnmarked = isInUnmarkedSession(opened_.path);
}

bool IndexOpening::isInUnmarkedSession(const std::string& path) const {
  const auto onDrive = Paths::asDrivePath(path);
  if (!onDrive) return false;
  const auto sessions = services_.files.discSessions(path);
  if (sessions.empty()) return false;
  const auto session = std::find_if(sessions.begin(), sessions.end(), [&](const DiscSession& one) {
    return one.start == onDrive->session;
  });
  return !(session != sessions.end() ? *session : sessions.back()).identity.isKnown();
}

bool IndexOpening::doFillRestoreTable() {
  const FlagScope loading(page_.IndexLoading);
  const WaitPointer wait(services_.desktop);
  selection_.doInitRestoreGrid();
  page_.OutlineDepth = std::numeric_limits<int>::min();
  page_.icons = iconsFor(vsTXT.rows());
  const int step = progressStep(vsTXT.rows());
  const auto progress = [this, step](int line, int lines) {
    if (line % step != 0) return;
    const auto percent = static_cast<int>(static_cast<std::int64_t>(line) * 100 / lines);
    page_.vsBackupIndex = "Reading backup index " + std::to_string(percent) + "%...";
    page_.vsBackupIndexBar = percent;
    services_.desktop.doYield();
  };
  const IndexFilling filling = fillRestoreTree(vsTXT, page_.vsRestore, progress);
  services_.desktop.doYield();
  page_.OutlineDepth = filling.outlineDepth;
  takeOrigin(filling.header);
  showHeader(filling);
  page_.vsBackupIndexBar = 0;
  selection_.doSetRestoreButtons();
  // What stands can be restored; that something is missing must not stay unknown.
  if (filling.tooDeep) doFormatError();
  return true;
}

void IndexOpening::showHeader(const IndexFilling& filling) {
  const IndexHeader& header = filling.header;
  const std::int64_t files = header.files - (filling.holdsKit ? 1 : 0);
  page_.txJobName = header.jobName;
  page_.vsBackupIndex = "Backup index of \"" + header.jobName + "\"";
  std::string facts = std::string(page_.IsDifferential ? "Differential" : "Full") +
                      " backup:  " + Text::counted(header.discs, "disc") + ", " +
                      Text::counted(files, "file");
  if (header.splits > 0) facts += ", " + Text::counted(header.splits, "file") + " split";
  page_.vsBackupInfo[0] = facts + ", " + formatSizeText(header.size, true) + ".";
  page_.vsBackupInfo[1] =
      "Backup created by:  " + (header.owner.empty() ? "<Unknown>" : header.owner) +
      ", Backup time: " + doGetFileDateString(header.created);
  selection_.doShowRestoreTotals();
}

void IndexOpening::doAfterOpening() {
  if (!page_.vsRestore.hasData()) return;
  const Answer all =
      services_.desktop.doShowMessage({.text = "Do you want to restore all backup items?",
                                       .title = "Select All ?",
                                       .icon = MessageIcon::Question,
                                       .buttons = MessageButtons::YesNo});
  if (all == Answer::Yes) selection_.doSelectAllRows();
  if (page_.txRestoreTo.empty()) doBrowseTarget();
}

void IndexOpening::doBrowseTarget() {
  const std::string& start =
      page_.txRestoreTo.empty() ? services_.workspace.homeFolder : page_.txRestoreTo;
  const std::string chosen = services_.desktop.doAskFolder("Restore to", start);
  if (!chosen.empty()) doSetTarget(chosen);
}

void IndexOpening::doSetTarget(const std::string& folder) {
  page_.txRestoreTo = folder;
  if (Paths::isNative(folder) && services_.files.doFolderExists(folder))
    services_.settings.profile().doWriteProfile("Restore", "Target", folder);
}

void IndexOpening::doFormatError() {
  services_.desktop.doShowMessage(
      {.text = FormatError, .title = "Error", .icon = MessageIcon::Stop});
}

}  // namespace korvenal
