#include "restore/IndexSearch.h"

#include <algorithm>

#include "device/DiscNames.h"
#include "platform/Paths.h"
#include "restore/IndexNames.h"

namespace korvenal {

namespace {

/// An index in the tree of a session.
struct Sighting {
  FoundIndex index;
  std::string fileName;
  DiscSession session;
  bool isOwn = false;  ///< the session was burned by the backup of the index
};
using Sightings = std::vector<Sighting>;

bool isSameSet(const Sighting& a, const Sighting& b) {
  return a.fileName == b.fileName && a.isOwn && b.isOwn &&
         a.session.identity.isSame(b.session.identity);
}

class DiscSearch {
 public:
  DiscSearch(const FileView& files, char letter, const std::function<void()>& yield)
      : files_(files), letter_(letter), yield_(yield) {}

  Sightings run() {
    for (const DiscSession& session : files_.discSessions(Paths::onDrive(letter_, "")))
      lookInto(session);
    // What no session calls its own is of the oldest that holds it, which was seen first.
    Sightings found;
    for (const Sighting& one : all_)
      if (one.isOwn || isFirstOfUnclaimed(one)) found.push_back(one);
    return found;
  }

 private:
  void lookInto(const DiscSession& session) {
    const std::string root = Paths::onDrive(letter_, session.start, "");
    for (const std::string& name : files_.listFolder(root)) {
      yield_();
      if (!IndexNames::isIndex(name)) continue;
      const FileInfo info = files_.doGetInfo(root + name);
      if (info.kind != FileInfo::Kind::File || (info.attributes & AttributeSystem) != 0) continue;
      all_.push_back({{std::string(1, letter_) + ":", IndexNames::innerPart(name), root + name},
                      name,
                      session,
                      IndexNames::isOf(name, session.identity)});
    }
  }

  bool isFirstOfUnclaimed(const Sighting& one) const {
    const bool claimed = std::any_of(all_.begin(), all_.end(), [&](const Sighting& other) {
      return other.fileName == one.fileName && other.isOwn;
    });
    const auto first = std::find_if(all_.begin(), all_.end(), [&](const Sighting& other) {
      return other.fileName == one.fileName;
    });
    return !claimed && &*first == &one;
  }

  const FileView& files_;
  char letter_;
  const std::function<void()>& yield_;
  Sightings all_;
};

}  // namespace

FoundIndexes findIndexes(const FileView& files, std::string_view letters,
                         const std::function<void()>& yield) {
  Sightings found;
  for (const char letter : letters) {
    for (Sighting& one : DiscSearch(files, letter, yield).run()) {
      const auto copy = std::find_if(found.begin(), found.end(),
                                     [&](const Sighting& other) { return isSameSet(one, other); });
      if (copy == found.end())
        found.push_back(std::move(one));
      else if (one.session.label == DiscNames::labelOf(1) &&
               copy->session.label != one.session.label)
        *copy = std::move(one);  // a restore begins with this disc
    }
  }
  FoundIndexes indexes;
  for (Sighting& one : found) indexes.push_back(std::move(one.index));
  return indexes;
}

}  // namespace korvenal
