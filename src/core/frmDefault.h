#pragma once

#include "core/Settings.h"
#include "platform/Desktop.h"
#include "platform/Form.h"

namespace korvenal {

/// The default options: what new jobs and restores begin with. Nothing changes until OK.
class frmDefault : public Form {
 public:
  frmDefault(Settings& settings, Desktop& desktop);

  // Options and list indices, as in Settings.
  int optSplitAndSpan = 1;  ///< 0 don't split if possible, 1 split and span
  bool FinalizeDisc = false, AutoErase = false, SkipError = true;
  bool ExcludeTopFolder = true, ExcludeEmptyFolder = true;
  bool SkipSystem = true, SkipOpen = true;
  int optFileSystem = 0;
  int RestoreOpt = 1;
  int FileSize = 2, DiscSize = 5;

  void pbDefault();  ///< sets the controls to what the program came with
  void pbOK();
  void pbCancel() { doClose(); }

 private:
  Settings& settings_;
  Desktop& desktop_;
};

}  // namespace korvenal
