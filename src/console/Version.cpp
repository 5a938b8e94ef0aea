#include "console/Version.h"

#include <cstdio>

#include "core/Workspace.h"

namespace korvenal::console {

int doPrintVersion() {
  std::puts(gProductName.c_str());
  return 0;
}

}  // namespace korvenal::console
