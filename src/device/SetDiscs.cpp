#include "device/SetDiscs.h"

#include <algorithm>

#include "platform/Text.h"

namespace korvenal {

namespace {

/// The sessions that no identity speaks for or against.
std::vector<DiscSession> unmarkedOf(const std::vector<DiscSession>& sessions,
                                    const WantedDisc& wanted) {
  if (!wanted.identity.isKnown()) return sessions;
  const auto marked = std::find_if(sessions.begin(), sessions.end(),
                                   [](const DiscSession& one) { return one.identity.isKnown(); });
  // What was appended later takes nothing from a set that is older than identities.
  if (marked != sessions.end() && !wanted.unmarked) return {};
  return {sessions.begin(), marked};
}

}  // namespace

DiscMatch matchDisc(const std::vector<DiscSession>& sessions, const WantedDisc& wanted) {
  const auto labelled = [&wanted](const DiscSession& one) {
    return Text::equalsIgnoreCase(one.label, wanted.label);
  };
  const DiscSession* ofSet = nullptr;
  for (const DiscSession& one : sessions) {
    if (!labelled(one) || !one.identity.isSame(wanted.identity)) continue;
    // The newest; where two jobs began in one second, of the job that is wanted.
    const bool better = one.identity.job == wanted.identity.job;
    if (ofSet == nullptr || better || ofSet->identity.job != wanted.identity.job) ofSet = &one;
  }
  if (ofSet != nullptr) return {DiscMatch::Kind::OfSet, {*ofSet}};
  std::vector<DiscSession> unmarked = unmarkedOf(sessions, wanted);
  if (std::any_of(unmarked.begin(), unmarked.end(), labelled))
    return {DiscMatch::Kind::ByLabel, std::move(unmarked)};
  const auto another = std::find_if(sessions.rbegin(), sessions.rend(), [&](const auto& one) {
    return labelled(one) && one.identity.isKnown();
  });
  if (another != sessions.rend()) return {DiscMatch::Kind::OfAnother, {*another}};
  return {};
}

}  // namespace korvenal
