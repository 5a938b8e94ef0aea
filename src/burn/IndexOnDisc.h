#pragma once

#include <cstdint>
#include <optional>

#include "burn/BurnServices.h"
#include "plan/BackupIndex.h"

namespace korvenal {

/// Puts the index of a backup on its discs: on disc 1, which is planned for it, and on every other
/// one that has room for it behind its own content. A copy holds what was true when its disc was
/// prepared. It stays out of the verification of all discs but the first: nothing depends on it,
/// and a restore that cannot read one goes by the index that it has.
class IndexOnDisc {
 public:
  explicit IndexOnDisc(BurnServices& services);

  /// Another plan: nobody has agreed to burn it without an index.
  void doForgetPlan() { withoutIndex_ = false; }

  /// Before the first disc: makes sure that there is an index, and writes it anew when there is
  /// none. Without any the person is asked whether to burn all the same; false when not.
  bool doEnsure();
  /// Puts the index, as the plan is now, into the layout of a disc, which holds so many files
  /// already. False when the run must end, since the first disc is to have one, or at a stop.
  bool doInsert(int disc, std::size_t filesInLayout);
  /// Puts it in anew after the plan has changed once more, unless it was taken back. As above.
  bool doReplace(int disc, std::size_t filesInLayout);
  /// The layout at hand lacks it, though the discs of this plan are to have one.
  bool isMissing() const { return isWanted() && !withoutIndex_ && !place_; }
  /// Takes it out again when the disc is too small for both. False when there is nothing to take.
  bool doTakeBack(int disc);

 private:
  bool isWanted() const { return services_.plan.IndexOnDiscs; }
  bool isUpToDate() const;
  bool doBringUpToDate();
  bool isAgreedToGoWithout();
  bool doPut(int disc, std::size_t filesInLayout);

  BurnServices& services_;
  BackupIndex index_;
  bool withoutIndex_ = false;          ///< the person agreed to burn this plan without an index
  std::size_t copies_ = 0;             ///< put into the layout at hand, those taken out too
  std::optional<std::int32_t> place_;  ///< its number in the layout at hand; nothing: not in it
};

}  // namespace korvenal
