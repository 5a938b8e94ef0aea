#include "console/RestoreCommandGroup.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/Text.h"
#include "platform/Walker.h"

namespace korvenal::console {

namespace {

constexpr int LastMode = 3;
constexpr int RestoreArguments = 4;

/// The mark of a row as a check box: ticked, partly, not.
const char* boxOf(RestoreCheck check) {
  switch (check) {
    case RestoreCheck::Checked:
      return "[x] ";
    case RestoreCheck::Partly:
      return "[-] ";
    default:
      return "[ ] ";
  }
}

}  // namespace

Commands RestoreCommandGroup::commands() {
  using A = const Arguments&;
  return {
      {"index", "[FILE.bdx]", "reads the backup index from the drives, or from a file", 0, 1,
       [this](A a) { return doIndex(a); }},
      {"list", "[PATTERN]", "lists what the index holds", 0, 1, [this](A a) { return doList(a); }},
      {"select", "all | none | PATTERN", "picks what is to be restored", 1, 1,
       [this](A a) { return doSelect(a); }},
      {"invert", "", "picks what was not picked", 0, 0, [this](A) { return doInvert(); }},
      {"find", "TEXT", "finds a name; again, the next one", 1, 1,
       [this](A a) { return doFind(a); }},
      {"restore", "FOLDER [--mode 0..3] [--only-files]",
       "restores; existing files: 0 replace, 1 ask, 2 replace older ones, 3 skip", 1,
       RestoreArguments, [this](A a) { return doRestore(a); }},
  };
}

ExitCode RestoreCommandGroup::doIndex(const Arguments& arguments) {
  frmMain& main = session_.main;
  if (!mayBegin(korvenal::Command::ChangePage, main.state) || main.state.ActionBusy)
    return session_.fail("An index cannot be opened now.");
  main.doTask02();
  main.controller.doShowStep(ActionController::Restore, ActionController::DefineStep);
  main.state.StopAction = false;
  // The target is named when the restore begins.
  session_.desktop.prepareFile("");
  const bool opened = arguments.empty()
                          ? main.indexOpening.doReadBackupIndex(true)
                          : main.indexOpening.doOpenIndexFile(absolutePath(arguments[0]));
  if (!opened) return main.state.StopAction ? ExitCode::Stopped : ExitCode::Failed;
  session_.screen.line(main.restorePage.vsBackupIndex);
  for (const std::string& line : main.restorePage.vsBackupInfo)
    if (!line.empty()) session_.screen.line(line);
  return ExitCode::Ok;
}

bool RestoreCommandGroup::beginSelection() {
  frmMain& main = session_.main;
  if (!main.restorePage.vsRestore.hasData()) {
    session_.screen.line("No backup index is open.");
    return false;
  }
  main.controller.mainTab = ActionController::RestorePage;
  if (main.controller.doShowStep(ActionController::Restore, ActionController::DefineStep))
    return true;
  session_.screen.line("The selection cannot be changed now.");
  return false;
}

std::string RestoreCommandGroup::rowText(int row) const {
  const RestoreTree& tree = session_.main.restorePage.vsRestore;
  std::string text = boxOf(tree.check(row));
  for (const int column : {RestoreDisc, RestoreSize, RestoreModified}) {
    const std::string cell = tree.text(row, column);
    if (!cell.empty()) text += cell + "  ";
  }
  return text.append(tree.doGetOriginPath(row));
}

ExitCode RestoreCommandGroup::doList(const Arguments& arguments) {
  const RestoreTree& tree = session_.main.restorePage.vsRestore;
  if (!tree.hasData()) return session_.fail("No backup index is open.");
  for (int row = 1; row < tree.Rows(); ++row) {
    session_.desktop.doYield();
    if (session_.main.state.StopAction) return ExitCode::Stopped;
    if (arguments.empty() || matchesPattern(tree.name(row), arguments[0]))
      session_.screen.line(rowText(row));
  }
  return ExitCode::Ok;
}

ExitCode RestoreCommandGroup::doSelect(const Arguments& arguments) {
  if (!beginSelection()) return ExitCode::Failed;
  RestoreSelection& selection = session_.main.selection;
  const std::string& what = arguments[0];
  bool found = true;
  if (what == "all")
    selection.doSelectAllRows();
  else if (what == "none")
    selection.doSelectNone();
  else
    found = selection.doSelectMatching(what) > 0;
  session_.screen.line(session_.main.restorePage.vsBackupInfo[2]);
  return found ? ExitCode::Ok : session_.fail("Nothing matches \"" + what + "\".");
}

ExitCode RestoreCommandGroup::doInvert() {
  if (!beginSelection()) return ExitCode::Failed;
  session_.main.selection.pbInvertSelection();
  session_.screen.line(session_.main.restorePage.vsBackupInfo[2]);
  return ExitCode::Ok;
}

ExitCode RestoreCommandGroup::doFind(const Arguments& arguments) {
  frmMain& main = session_.main;
  RestorePage& page = main.restorePage;
  if (!page.vsRestore.hasData()) return session_.fail("No backup index is open.");
  if (page.FindRow > 0 && page.FindText == arguments[0]) {
    main.find.doFindNext();
    if (page.FindRow == 0) return ExitCode::Failed;
  } else if (!main.find.doFindString(arguments[0], false)) {
    return session_.fail("No matching item found in backup index.");
  }
  session_.screen.line(rowText(page.FindRow));
  return ExitCode::Ok;
}

ExitCode RestoreCommandGroup::doRestore(const Arguments& arguments) {
  const Options options = parseOptions(arguments, {"--mode"}, {"--only-files"});
  if (!options.valid || options.rest.size() != 1) return ExitCode::Usage;
  frmMain& main = session_.main;
  RestorePage& page = main.restorePage;
  const auto mode = options.has("--mode") ? parseNumber(options.values.at("--mode"), 0, LastMode)
                                          : std::optional(page.RestoreOpt);
  if (!mode) return ExitCode::Usage;
  if (!page.vsRestore.hasData()) return session_.fail("No backup index is open.");
  page.RestoreOpt = *mode;
  const std::string target = absolutePath(options.rest[0]);
  std::error_code ignored;
  std::filesystem::create_directory(target, ignored);
  const bool sameRun =
      page.txRestoreTo == target && page.OnlyRestoreFile == options.has("--only-files");
  page.txRestoreTo = target;
  main.profile.doWriteProfile("Restore", "Target", target);
  page.OnlyRestoreFile = options.has("--only-files");
  ActionController& controller = main.controller;
  controller.mainTab = ActionController::RestorePage;
  // A restore that was stopped is still on its run page, and goes on from there.
  if (!sameRun) controller.doShowStep(ActionController::Restore, ActionController::DefineStep);
  if (controller.RestoreTab == ActionController::DefineStep)
    controller.PBNext(ActionController::Restore);
  main.restoreResult = {};
  session_.desktop.prepareFile("");
  controller.PBNext(ActionController::Restore);
  return restoreCode();
}

ExitCode RestoreCommandGroup::restoreCode() const {
  const RestoreResult& result = session_.main.restoreResult;
  if (result.end == RestoreResult::End::Stopped) return ExitCode::Stopped;
  if (result.end != RestoreResult::End::Finished) return ExitCode::Failed;
  if (result.isAllWell()) return ExitCode::Ok;
  return session_.fail("Not all is well: " + Text::counted(result.faults.discs, "disc") +
                       " failed, " +
                       Text::counted(std::max(result.faults.files, result.sum.failed), "file") +
                       " with errors (\"errors\" lists them).");
}

}  // namespace korvenal::console
