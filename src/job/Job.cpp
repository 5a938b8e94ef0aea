#include "job/Job.h"

namespace korvenal {

namespace {

constexpr const char* ContentsHeaders[] = {
    nullptr, "Name on Disc", "Name on Disc",       "Size",
    "Type",  "Modified",     "Include\nsubfolder", "Backup Source Path"};

}  // namespace

Job::Job() {
  doInitContents();
}

void Job::doInitContents() {
  vsContents.setCols(ContentsColumns);
  for (int col = 0; col < ContentsColumns; ++col) {
    const bool shown = col >= ContentsIcon && col <= ContentsPath;
    if (shown) vsContents.setText(0, col, ContentsHeaders[col]);
    vsContents.setColHidden(col, !shown);
  }
}

void Job::doMarkChanged(bool changed) {
  Modified = changed;
  if (changed) doSetEstimated(false);
}

}  // namespace korvenal
