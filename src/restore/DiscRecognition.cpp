#include "restore/DiscRecognition.h"

#include <algorithm>

#include "device/DiscNames.h"
#include "platform/Text.h"

namespace korvenal {

DiscRecognition::Look DiscRecognition::look(char letter, int number) const {
  const std::string label = DiscNames::labelOf(number);
  const DiscMatch match = matchDisc(files_.discSessions(Paths::onDrive(letter, "")),
                                    {label, page_.identity, page_.isSetUnmarked});
  if (match.kind == DiscMatch::Kind::Other) return {};
  if (match.kind == DiscMatch::Kind::OfAnother) return {{}, match.sessions.front().identity};
  const bool isOfSet = match.kind == DiscMatch::Kind::OfSet;
  const DiscSession session = isOfSet ? match.sessions.front() : sessionOf(letter, match, label);
  return {DiscInHand{letter, number, label, session.start, isOfSet}, {}};
}

/// Later sessions take over what earlier ones hold, so a set began with the oldest that has its
/// index. Without an index the newest of the label has all there is.
DiscSession DiscRecognition::sessionOf(char letter, const DiscMatch& match,
                                       const std::string& label) const {
  const auto& sessions = match.sessions;
  const auto holding =
      std::find_if(sessions.begin(), sessions.end(), [&](const DiscSession& session) {
        return !page_.IndexName.empty() &&
               files_.doIsFile(Paths::onDrive(letter, session.start, page_.IndexName));
      });
  if (holding != sessions.end()) return *holding;
  return *std::find_if(sessions.rbegin(), sessions.rend(), [&](const DiscSession& session) {
    return Text::equalsIgnoreCase(session.label, label);
  });
}

}  // namespace korvenal
