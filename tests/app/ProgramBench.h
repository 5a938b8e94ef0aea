#pragma once

#include <string>

#include "app/frmMain.h"
#include "device/DeviceBench.h"
#include "platform/linux/LinuxPlatform.h"

namespace korvenal::test {

/// The whole program over real files, on a machine whose drives are made up.
struct ProgramBench : DeviceBench {
  LinuxPlatform platform{{.applicationFolder = workspace.applicationFolder,
                          .imageDrives = {.folder = workspace.applicationFolder}}};
  frmMain main{ports(), workspace};

  /// The events of a run page as one text: marks and texts, without times.
  std::string events(int action) const {
    const Table& table = main.grids.vsEvent[static_cast<std::size_t>(action)];
    std::string all;
    for (int row = 1; row < table.Rows(); ++row)
      all += table.cellData(row, 1) + table.text(row, 1) + "\n";
    return all;
  }

 private:
  Ports ports() {
    const Ports real = platform.ports(desktop);
    return {real.files, real.targets, real.walker, real.archive, real.archiveBits, engine,
            devices,    real.trays,   desktop,     real.clock,   real.power};
  }
};

}  // namespace korvenal::test
