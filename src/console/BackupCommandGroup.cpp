#include "console/BackupCommandGroup.h"

#include "console/PlanExport.h"
#include "plan/frmEstimateInfo.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

constexpr const char* ExportUsage = "[--tsv FILE] [--json FILE]";
constexpr int ExportArguments = 4;
constexpr const char* EstimateUsage = "[--details] [--tsv FILE] [--json FILE]";

Options exportOptions(const Arguments& arguments, const Arguments& switches = {}) {
  return parseOptions(arguments, {"--tsv", "--json"}, switches);
}

std::string missedText(const RunFaults& faults) {
  return Text::counted(faults.missed, "item") + " could not be backed up; see the lines above.";
}

}  // namespace

Commands BackupCommandGroup::commands() {
  return {
      {"estimate", EstimateUsage, "tells how many discs the job needs, and what goes on each", 0,
       ExportArguments + 1, [this](const Arguments& a) { return doEstimate(a); }},
      {"backup", ExportUsage, "burns the job to discs and verifies them", 0, ExportArguments,
       [this](const Arguments& a) { return doBackup(a); }},
  };
}

ExitCode BackupCommandGroup::doEstimate(const Arguments& arguments) {
  const Options options = exportOptions(arguments, {"--details"});
  if (!options.valid || !options.rest.empty()) return ExitCode::Usage;
  frmMain& main = session_.main;
  if (!main.job.hasItems()) return session_.fail("Backup data contents is empty.");
  main.doEditJob();
  main.estimate.pbEstimate();
  if (main.job.estimateShown && options.has("--details")) doShowDetails();
  if (main.job.estimateShown) session_.screen.line(main.estimate.EstimateDisc);
  for (const std::string& note : main.plan.skippedNotes) session_.screen.line(note);
  const ActionState& state = main.state;
  if (state.LimitExceeded) return doExport(options, ExitCode::Failed);
  return doExport(options, state.StopAction ? ExitCode::Stopped : ExitCode::Ok);
}

void BackupCommandGroup::doShowDetails() {
  frmMain& main = session_.main;
  if (!frmEstimateInfo::isWanted(main.profile)) main.estimate.pbEstimateInfo();
  frmEstimateInfo report(main.job, main.plan, main.profile);
  const int columns = report.chkShowPath() ? DiscContentsColumns : DiscContentsSource;
  for (int disc = 1; disc < report.vsDisc.Rows(); ++disc) {
    report.doSelectDisc(disc);
    for (int row = 0; row < report.vsDContents.Rows() && !main.state.StopAction; ++row) {
      std::string line = (row == 0 ? "" : "  ") + report.vsDContents.text(row, 0);
      for (int column = 1; column < columns; ++column) {
        const std::string cell = report.vsDContents.text(row, column);
        if (!cell.empty()) line += "  " + cell;
      }
      session_.screen.line(line);
      session_.desktop.doPollInterrupt();
    }
  }
}

ExitCode BackupCommandGroup::doBackup(const Arguments& arguments) {
  const Options options = exportOptions(arguments);
  if (!options.valid || !options.rest.empty()) return ExitCode::Usage;
  frmMain& main = session_.main;
  ActionController& controller = main.controller;
  controller.mainTab = ActionController::BackupPage;
  // A backup that was stopped is still on its run page, and goes on from there.
  if (controller.BackupTab == ActionController::DefineStep)
    controller.PBNext(ActionController::Backup);
  main.backupResult = {};
  controller.PBNext(ActionController::Backup);
  return doExport(options, backupCode());
}

ExitCode BackupCommandGroup::backupCode() const {
  const BackupResult& result = session_.main.backupResult;
  const RunFaults& faults = result.faults;
  switch (result.end) {
    case BackupResult::End::Stopped:
      return ExitCode::Stopped;
    case BackupResult::End::NothingToDo:
      // A full backup without a file has lost its sources; a differential one has had a quiet day.
      if (faults.missed > 0) return session_.fail(missedText(faults));
      return session_.main.job.isDifferential() ? ExitCode::Ok : ExitCode::Failed;
    case BackupResult::End::Finished:
      if (faults.discs == 0 && faults.files == 0 && faults.notVerified == 0)
        return faults.missed == 0 ? ExitCode::Ok : session_.fail(missedText(faults));
      return session_.fail("Not all is well: " + Text::counted(faults.discs, "disc") + " failed, " +
                           Text::counted(faults.notVerified, "disc") + " not verified, " +
                           Text::counted(faults.files, "file") + " with errors." +
                           (faults.missed > 0 ? " " + missedText(faults) : ""));
    default:
      return ExitCode::Failed;
  }
}

ExitCode BackupCommandGroup::doExport(const Options& options, ExitCode code) {
  const frmMain& main = session_.main;
  const auto write = [&](const std::string& option, auto&& writer) {
    const auto at = options.values.find(option);
    if (at == options.values.end()) return;
    const std::string path = absolutePath(at->second);
    const FileOutcome outcome = writer(path);
    if (outcome) return;
    session_.screen.line(path + ": " + outcome.text);
    if (code == ExitCode::Ok) code = ExitCode::Failed;
  };
  write("--tsv",
        [&](const std::string& path) { return writePlanRows(session_.files, path, main.plan); });
  write("--json", [&](const std::string& path) {
    return session_.files.writeAll(path, planSummary(main.plan, main.state));
  });
  return code;
}

}  // namespace korvenal::console
