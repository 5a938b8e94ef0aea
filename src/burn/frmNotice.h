#pragma once

#include <string>

#include "core/ActionState.h"
#include "platform/Form.h"
#include "platform/Profile.h"

namespace korvenal {

/// The notice before a burn, shown until the person no longer wants it.
class frmNotice : public Form {
 public:
  frmNotice(ActionState& state, Profile& profile) : state_(state), profile_(profile) {}

  const std::string caption = "Important Notice";
  const std::string text =
      "Before burning backup to disc, please stop other service software that may control or "
      "monitor the CD/DVD devices operation in the background; otherwise it may cause the disc "
      "burning operation unstable and damage your disc.";
  const std::string ckShowNoMoreText = "Don't show this message again.";
  bool ckShowNoMore = false;

  /// Is the notice still wanted?
  static bool isWanted(const Profile& profile);

  void pbOK() { doLeave(); }
  /// "&Stop Action".
  void pbStop();
  void doCloseBox() override { doLeave(); }

 private:
  void doLeave();

  ActionState& state_;
  Profile& profile_;
};

}  // namespace korvenal
