#pragma once

namespace korvenal::console {

/// Prints the product name. 0.
int doPrintVersion();

}  // namespace korvenal::console
