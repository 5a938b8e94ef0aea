#include "core/Workspace.h"

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

Workspace Workspace::below(const std::string& applicationFolder, const std::string& binFolder,
                           const std::string& homeFolder) {
  Workspace workspace;
  workspace.applicationFolder = Paths::withEnd(applicationFolder);
  workspace.binFolder = Paths::withEnd(binFolder);
  workspace.homeFolder = Paths::withEnd(homeFolder);
  const std::string& app = workspace.applicationFolder;
  workspace.gSettingsFile = app + "KORVEN2.dat";
  workspace.gRecentFile = app + "RecentBackup.dat";
  workspace.gDiscLogFile = app + "DiscLog.dat";
  workspace.gHelpFile = workspace.binFolder + "help/contents.html";
  workspace.TempFolder = app;
  workspace.AutoloaderFolder = app + "Autoloader/";
  workspace.logFolder = app + "LOG/";
  workspace.scratchFolder = app + "TMP/";
  return workspace;
}

std::string Workspace::helpPage(const std::string& topic) const {
  const std::string name = Text::replaceAll(Text::toLower(topic), " ", "-");
  return Paths::withEnd(Paths::doGetFolderPart(gHelpFile)) + name + ".html";
}

void Workspace::doCheckTempFolder(Files& files, const std::string& wanted) {
  TempFolder = wanted;
  if (wanted.empty() || !files.doFolderExists(wanted)) {
    TempFolder = applicationFolder + "TEMP/";
    if (!files.doFolderExists(TempFolder)) files.doCreateFolderPath(TempFolder);
    if (!files.doFolderExists(TempFolder)) TempFolder = applicationFolder;
  }
  TempFolder = Paths::withEnd(TempFolder);
}

void Workspace::doCheckFolders(Files& files) const {
  for (const std::string& folder : {scratchFolder, logFolder})
    if (!files.doFolderExists(folder)) files.doCreateFolderPath(folder);
}

}  // namespace korvenal
