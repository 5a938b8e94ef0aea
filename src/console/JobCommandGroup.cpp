#include "console/JobCommandGroup.h"

#include "console/TableText.h"
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
  return {
      {"new", "[NAME]", "begins a new job", 0, 1, [this](A a) { return doNew(a); }},
      {"open", "FILE.jbf", "opens a job", 1, 1, [this](A a) { return doOpen(a); }},
      {"save", "FILE.jbf", "saves the job", 1, 1, [this](A a) { return doSave(a); }},
      {"show", "", "shows the job", 0, 0, [this](A) { return doShow(); }},
      {"set", "CONTROL VALUE", "sets a control by its name, as \"show\" lists them", 2, 2,
       [this](A a) { return doSet(a); }},
  };
}

void JobCommandGroup::doDropWhenUnattended() {
  const Answers& answers = session_.answers;
  if (answers.agreesToAll() || !answers.isAttended()) session_.main.job.doMarkChanged(false);
}

ExitCode JobCommandGroup::doNew(const Arguments& arguments) {
  frmMain& main = session_.main;
  const bool named = !arguments.empty();
  if (named &&
      (arguments[0].empty() || arguments[0].find_first_of(ForbiddenChars) != std::string::npos))
    return session_.fail("A job's name holds none of " + ForbiddenChars);
  if (!session_.beginEdit()) return ExitCode::Failed;
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
  main.doEditJob();
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

ExitCode JobCommandGroup::doSetSubfolder(const std::string& name, const std::string& value) {
  const auto on = parseFlag(value);
  const int row = session_.findItem(name);
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
  if (!session_.beginEdit()) return ExitCode::Failed;
  const std::string folder = subfolderName(arguments[0]);
  if (!folder.empty()) return doSetSubfolder(folder, arguments[1]);
  if (const auto code = doSetAmong(backupControls(session_.main), arguments)) return *code;
  return session_.fail("There is no control " + arguments[0] + ".");
}

}  // namespace korvenal::console
