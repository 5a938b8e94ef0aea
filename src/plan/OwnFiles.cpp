#include "plan/OwnFiles.h"

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

std::vector<std::string> OwnFiles::leftOutBelow(const std::string& path, bool isShelf) const {
  std::vector<std::string> all = folders;
  const bool namesDiscs =
      isShelf || (!shelf.empty() && Text::startsWith(Paths::withEnd(path), shelf));
  const std::vector<std::string>& files = namesDiscs ? written : discs;
  all.insert(all.end(), files.begin(), files.end());
  return all;
}

}  // namespace korvenal
