#pragma once

#include <functional>
#include <string_view>

#include "platform/Files.h"
#include "restore/frmReadLog.h"

namespace korvenal {

/// The indexes in the root folders of the discs in the drives, in the order of the drives and of
/// the sessions on each disc. A later session takes over the indexes of the earlier ones: each is
/// found once, in the session of its own backup. Copies on further discs of a set are no further
/// indexes. `yield` runs again and again.
FoundIndexes findIndexes(const FileView& files, std::string_view letters,
                         const std::function<void()>& yield);

}  // namespace korvenal
