#pragma once

#include "app/RunDiscs.h"
#include "core/RunPace.h"
#include "ui/DiscBar.h"

namespace korvenal::ui {

/// The work of a run, as its discs are drawn.
struct RunProgress {
  const Progress& progress;
  const RunPace& pace;
};

/// How a disc of a run is drawn, with what is told beside it.
DiscFill discFill(const RunDisc& disc, const RunProgress& at);

/// "1.7 of 4.4 GB, 21.0 MB/s, about 2 minutes": as much of it as is known.
QString paceText(const RunProgress& at);

}  // namespace korvenal::ui
