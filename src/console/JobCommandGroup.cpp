#include "console/JobCommandGroup.h"

#include <algorithm>

#include "console/TableText.h"
#include "job/frmCreateItem.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

constexpr std::string_view SubfolderHead = "include-subfolder(";

/// The name in "include-subfolder(NAME)"; empty for any other text.
std::string subfolderName(const std::string& control) {
  if (!Text::startsWith(control, SubfolderHead) || !Text::endsWith(control, ")")) return {};
  return control.substr(SubfolderHead.size(), control.size() - SubfolderHead.size() - 1);
}

}  // namespace

Commands JobCommandGroup::commands() {
  using A = const Arguments&;
  constexpr int Any = Command::Any;
  return {
      {"new", "[NAME]", "begins a new job", 0, 1, [this](A a) { return doNew(a); }},
      {"open", "FILE.jbf", "opens a job", 1, 1, [this](A a) { return doOpen(a); }},
      {"save", "FILE.jbf", "saves the job", 1, 1, [this](A a) { return doSave(a); }},
      {"show", "", "shows the job", 0, 0, [this](A) { return doShow(); }},
      {"add", "PATH...", "adds files and folders", 1, Any, [this](A a) { return doAdd(a); }},
      {"create", "file|folder NAME PATH", "adds an item whose path need not exist now", 3, 3,
       [this](A a) { return doCreate(a); }},
      {"import", "FILE.m3u", "adds the files that a play list names", 1, 1,
       [this](A a) { return doImport(a); }},
      {"remove", "NAME", "removes an item", 1, 1, [this](A a) { return doRemove(a); }},
      {"rename", "NAME NEWNAME", "gives an item another name on disc", 2, 2,
       [this](A a) { return doRename(a); }},
      {"set", "CONTROL VALUE", "sets a control by its name, as \"show\" lists them", 2, 2,
       [this](A a) { return doSet(a); }},
  };
}

bool JobCommandGroup::beginEdit() {
  frmMain& main = session_.main;
  if (mayBegin(korvenal::Command::AddItems, main.state)) {
    main.doTask01();
    return true;
  }
  session_.screen.line("The job cannot be changed now.");
  return false;
}

void JobCommandGroup::doDropWhenUnattended() {
  const Answers& answers = session_.answers;
  if (answers.agreesToAll() || !answers.isAttended()) session_.main.job.doMarkChanged(false);
}

int JobCommandGroup::findItem(const std::string& name) {
  const Table& contents = session_.main.job.vsContents;
  for (int row = 1; row < contents.Rows(); ++row)
    if (contents.text(row, ContentsName) == name) return row;
  session_.screen.line("There is no item \"" + name + "\".");
  return 0;
}

ExitCode JobCommandGroup::doNew(const Arguments& arguments) {
  frmMain& main = session_.main;
  const bool named = !arguments.empty();
  if (named &&
      (arguments[0].empty() || arguments[0].find_first_of(ForbiddenChars) != std::string::npos))
    return session_.fail("A job's name holds none of " + ForbiddenChars);
  if (!beginEdit()) return ExitCode::Failed;
  doDropWhenUnattended();
  if (!main.jobFile.doQuerySaveJob()) return ExitCode::Failed;
  main.newJob.doNewJob();
  if (named) main.jobControls.setJobName(arguments[0]);
  main.job.doMarkChanged(false);
  return ExitCode::Ok;
}

ExitCode JobCommandGroup::doOpen(const Arguments& arguments) {
  frmMain& main = session_.main;
  if (!mayBegin(korvenal::Command::OpenJob, main.state))
    return session_.fail("A job cannot be opened now.");
  const std::string file = absolutePath(arguments[0]);
  if (!session_.files.doIsFile(file)) return session_.fail("There is no file " + file + ".");
  main.doTask01();
  doDropWhenUnattended();
  session_.desktop.prepareFile(file);
  if (!main.jobFile.doLoadJob("")) return ExitCode::Failed;
  return doShow();
}

ExitCode JobCommandGroup::doSave(const Arguments& arguments) {
  frmMain& main = session_.main;
  if (!mayBegin(korvenal::Command::SaveJob, main.state))
    return session_.fail("The job cannot be saved now.");
  session_.desktop.prepareFile(absolutePath(arguments[0]));
  return main.jobFile.doSaveJob() ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode JobCommandGroup::doShow() {
  for (const Control& control : backupControls(session_.main))
    session_.screen.line("  " + control.name + " = " + control.value());
  const Job& job = session_.main.job;
  session_.screen.raw(tableText(job.vsContents));
  for (int row = 1; row < job.vsContents.Rows(); ++row) {
    if (job.vsContents.check(row, ContentsSubfolder) == Table::Check::Unticked)
      session_.screen.line("Without sub-folders: " + job.vsContents.text(row, ContentsName));
  }
  return ExitCode::Ok;
}

ExitCode JobCommandGroup::doAdd(const Arguments& arguments) {
  frmMain& main = session_.main;
  if (!beginEdit()) return ExitCode::Failed;
  std::vector<std::string> paths;
  std::transform(arguments.begin(), arguments.end(), std::back_inserter(paths), absolutePath);
  const int before = main.job.vsContents.Rows();
  main.addItems.doPickItems(paths);
  const int added = main.job.vsContents.Rows() - before;
  if (main.state.StopAction && added < std::ssize(paths)) return ExitCode::Stopped;
  return added == std::ssize(paths) ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode JobCommandGroup::doCreate(const Arguments& arguments) {
  frmMain& main = session_.main;
  const bool folder = arguments[0] == "folder";
  if (!folder && arguments[0] != "file") return ExitCode::Usage;
  if (!beginEdit()) return ExitCode::Failed;
  frmCreateItem form(main.addItems, main.job, session_.desktop);
  form.TypeOpt = folder ? 1 : 0;
  form.setName(arguments[1]);
  form.setSource(arguments[2]);
  if (form.txName() != arguments[1] || form.txSource() != arguments[2] || !form.isOkEnabled())
    return session_.fail("The name or the path holds characters that are not possible there.");
  form.pbOK();
  return form.isClosed() ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode JobCommandGroup::doImport(const Arguments& arguments) {
  frmMain& main = session_.main;
  const std::string list = absolutePath(arguments[0]);
  if (!session_.files.doIsFile(list)) return session_.fail("There is no file " + list + ".");
  if (!beginEdit()) return ExitCode::Failed;
  session_.desktop.prepareFile(list);
  const int before = main.job.vsContents.Rows();
  main.addItems.doImportM3U();
  const int added = main.job.vsContents.Rows() - before;
  session_.screen.line(Text::counted(added, "item") + " added.");
  return ExitCode::Ok;
}

ExitCode JobCommandGroup::doRemove(const Arguments& arguments) {
  if (!beginEdit()) return ExitCode::Failed;
  const int row = findItem(arguments[0]);
  if (row == 0) return ExitCode::Failed;
  session_.main.job.vsContents.Row = row;
  session_.main.contentsEditing.doDeleteItem();
  return ExitCode::Ok;
}

ExitCode JobCommandGroup::doRename(const Arguments& arguments) {
  if (!beginEdit()) return ExitCode::Failed;
  const int row = findItem(arguments[0]);
  if (row == 0) return ExitCode::Failed;
  if (arguments[1].find_first_of(ForbiddenChars) != std::string::npos)
    return session_.fail("A name on disc holds none of " + ForbiddenChars);
  const NameEdit edit = session_.main.contentsEditing.doRename(row, arguments[1]);
  return edit == NameEdit::Taken ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode JobCommandGroup::doSetSubfolder(const std::string& name, const std::string& value) {
  const auto on = parseFlag(value);
  const int row = findItem(name);
  if (row == 0) return ExitCode::Failed;
  if (on && session_.main.jobControls.setSubfolder(row, *on)) return ExitCode::Ok;
  return session_.fail(on ? "\"" + name + "\" is no folder." : "The value is 1 or 0.");
}

std::optional<ExitCode> JobCommandGroup::doSetAmong(const std::vector<Control>& controls,
                                                    const Arguments& arguments) {
  for (const Control& control : controls) {
    if (control.name != arguments[0]) continue;
    if (control.set(arguments[1])) return ExitCode::Ok;
    return session_.fail(arguments[0] + " cannot be \"" + arguments[1] + "\".");
  }
  return {};
}

ExitCode JobCommandGroup::doSet(const Arguments& arguments) {
  if (const auto code = doSetAmong(restoreControls(session_.main), arguments)) return *code;
  if (!beginEdit()) return ExitCode::Failed;
  const std::string folder = subfolderName(arguments[0]);
  if (!folder.empty()) return doSetSubfolder(folder, arguments[1]);
  if (const auto code = doSetAmong(backupControls(session_.main), arguments)) return *code;
  return session_.fail("There is no control " + arguments[0] + ".");
}

}  // namespace korvenal::console
