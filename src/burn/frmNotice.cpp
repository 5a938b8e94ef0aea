#include "burn/frmNotice.h"

namespace korvenal {

namespace {
constexpr const char* Section = "Backup";
constexpr const char* Key = "Notice";
}  // namespace

bool frmNotice::isWanted(const Profile& profile) {
  return profile.doReadProfile(Section, Key, "0") == "0";
}

void frmNotice::pbStop() {
  state_.StopAction = true;
  doLeave();
}

void frmNotice::doLeave() {
  if (ckShowNoMore) profile_.doWriteProfile(Section, Key, "1");
  doClose();
}

}  // namespace korvenal
