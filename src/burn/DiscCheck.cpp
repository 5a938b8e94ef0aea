#include "burn/DiscCheck.h"

#include <algorithm>

#include "platform/Paths.h"

namespace korvenal {

namespace {

/// What a disc is called that was burned before the one of the attempt. Without an index all discs
/// of a backup bear one label.
bool isLabelOfEarlier(const std::string& label, int number, bool numbered) {
  if (!numbered) return number > 1;
  for (int disc = 1; disc < number; ++disc)
    if (label == "Backup #" + std::to_string(disc)) return true;
  return false;
}

}  // namespace

bool DiscCheck::isWritable(DiscAttempt& attempt) const {
  attempt.type = services_.engine.do_DiscIs();
  if (attempt.type == DiscNone) {
    attempt.record.discType = "Unknown";
    attempt.doFail("Error: Unknown disc type.");
    return false;
  }
  if (!texts_.doIsDiscWritable(attempt.type)) {
    attempt.record.discType = doGetDiscTypeName(attempt.type);
    attempt.doFail("Error: Disc is not writable.");
    return false;
  }
  return true;
}

bool DiscCheck::isLargeEnough(DiscAttempt& attempt) const {
  attempt.record.discType = texts_.discText(attempt.type);
  services_.grids.doEventMessage("Disc type:  " + attempt.record.discType);
  const Fixed4 capacity = services_.engine.do_GetTotalBlocksOnDisc() * BlockBytes;
  if (services_.plan.doGetDiscSZ(attempt.number) <= capacity) return true;
  attempt.doFail("Error: Wrong disc type.");
  return false;
}

bool DiscCheck::isUsable(DiscAttempt& attempt) const {
  BurnEngine& engine = services_.engine;
  const Job& job = services_.job;
  attempt.blank = texts_.doIsDiscBlank(attempt.type);
  attempt.needsErase = job.AutoErase && !attempt.blank && engine.do_Erasable() != 0;
  if (attempt.needsErase && holdsEarlierDisc(attempt)) {
    services_.grids.doEventMessage("*This disc was burned in this backup and is not erased.");
    attempt.needsErase = false;
    attempt.doFail("Error: Disc is not empty.");
    return false;
  }
  attempt.needsFormat = attempt.type == DiscDvdPlusRw && engine.do_SessionsOnDisc() == 0;
  // Only a backup of one disc may stand beside what a disc already holds.
  const bool mayAppend = services_.plan.TotalDiscs == 1 && job.optFileSystem == 0;
  if (attempt.blank || attempt.needsFormat || attempt.needsErase || mayAppend) return true;
  attempt.doFail("Error: Disc is not empty.");
  return false;
}

bool DiscCheck::holdsEarlierDisc(const DiscAttempt& attempt) const {
  const Plan& plan = services_.plan;
  const auto sessions = services_.files.discSessions(Paths::onDrive(attempt.letter, ""));
  return std::any_of(sessions.begin(), sessions.end(), [&](const DiscSession& session) {
    return session.identity.isSame(plan.identity) &&
           isLabelOfEarlier(session.label, attempt.number, plan.IndexOnDiscs);
  });
}

bool DiscCheck::hasRoom(DiscAttempt& attempt) const {
  const std::string text = texts_.roomText();
  const Fixed4 room = services_.engine.do_GetFreeBlocksOnDisc() * BlockBytes;
  // An erase gives back what the disc holds: that is looked at again when the track is prepared.
  if (text.empty() || attempt.needsErase || services_.plan.doGetDiscSZ(attempt.number) <= room)
    return true;
  services_.grids.doEventMessage("*" + text);
  attempt.doFail("Error: Disc free space not enough.");
  return false;
}

}  // namespace korvenal
