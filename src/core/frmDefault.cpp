#include "core/frmDefault.h"

namespace korvenal {

namespace {

/// The index when it is one of the list, else the fallback.
int inList(std::int64_t index, std::size_t size, int fallback) {
  return index >= 0 && index < static_cast<std::int64_t>(size) ? static_cast<int>(index) : fallback;
}

}  // namespace

frmDefault::frmDefault(Settings& settings, Desktop& desktop)
    : optSplitAndSpan(settings.SplitFile ? 0 : 1),
      FinalizeDisc(settings.Finalize),
      AutoErase(settings.AutoErase),
      SkipError(settings.SkipError),
      ExcludeTopFolder(settings.ExcludeTopFolder),
      ExcludeEmptyFolder(settings.ExcludeEmptyFolder),
      SkipSystem(settings.SkipSystem),
      SkipOpen(settings.SkipOpen),
      optFileSystem(inList(settings.FileSystem, 2, 0)),
      RestoreOpt(inList(settings.Default, 4, 1)),
      FileSize(inList(settings.SplitSize, std::size(SplitFileMegabytes), 2)),
      DiscSize(inList(settings.SplitSize2, std::size(SplitDiscMegabytes), 5)),
      settings_(settings),
      desktop_(desktop) {}

void frmDefault::pbDefault() {
  optSplitAndSpan = 1;
  FinalizeDisc = AutoErase = false;
  SkipError = ExcludeTopFolder = ExcludeEmptyFolder = SkipSystem = SkipOpen = true;
  optFileSystem = 0;
  RestoreOpt = 1;
  FileSize = 2;
  DiscSize = 5;
  doRepaint();
}

void frmDefault::pbOK() {
  const WaitPointer wait(desktop_);
  settings_.SplitFile = optSplitAndSpan == 0;
  settings_.Finalize = FinalizeDisc;
  settings_.AutoErase = AutoErase;
  settings_.SkipError = SkipError;
  settings_.ExcludeTopFolder = ExcludeTopFolder;
  settings_.ExcludeEmptyFolder = ExcludeEmptyFolder;
  settings_.SkipSystem = SkipSystem;
  settings_.SkipOpen = SkipOpen;
  settings_.FileSystem = optFileSystem == 0 ? 0 : 1;
  settings_.Default = RestoreOpt;
  settings_.SplitSize = FileSize;
  settings_.SplitSize2 = DiscSize;
  settings_.doSaveInitData();
  settings_.doReadInitData();
  doClose();
}

}  // namespace korvenal
