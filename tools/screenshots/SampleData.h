#pragma once

#include <QString>

namespace korvenal::tools {

/// Makes files as people have them below the folder: pictures, letters, music, one long film. The
/// film is sparse, so it costs no room; what it holds is zeros all the same when it is burned.
void makeSampleData(const QString& folder);

}  // namespace korvenal::tools
