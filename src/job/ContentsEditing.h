#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "core/ActionState.h"
#include "job/Job.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Which buttons of the item table may act now.
struct JobCommands {
  bool items = false;  ///< delete, rename, clear all, save, estimate
  bool moveUp = false;
  bool moveDown = false;
  bool randomize = false;
};

/// The column by which the items stand in order since a click on its header.
struct SortMark {
  int col = -1;  ///< -1 for none
  bool descending = false;
  bool operator==(const SortMark&) const = default;
};

/// How the editing of a name ended.
enum class NameEdit {
  Taken,       ///< the new name stands
  Restored,    ///< nothing usable was typed: the old name is back
  Duplicated,  ///< told, and the old name is back: the edit begins again
};

/// What a person does to the items in the table. Rows count from 1.
class ContentsEditing {
 public:
  ContentsEditing(ActionState& state, Desktop& desktop, Job& job)
      : state_(state), desktop_(desktop), job_(job) {}

  JobCommands doUpdateJobCommands() const;

  /// What the name field of a row takes of a text: trimmed and without forbidden characters, but
  /// for those that the name brought along from its source.
  std::string typedName(int row, std::string_view typed) const;
  /// Ends the editing of a name. An empty one leaves the old name;
  /// one that another row bears is refused with a message.
  NameEdit doRename(int row, std::string_view typed);
  /// The button: removes the current row without a question.
  void doDeleteItem();
  /// The Delete key: asks first.
  void doDeleteKey();
  void doClearAllFiles();
  void doMoveUp();
  void doMoveDown();
  /// The current row gets the place of the row `to`, as after so many moves up or down.
  void doMoveTo(int to);
  void doRandomize();
  /// A click on a header cell: name, size and date sort, and turn round at the next click.
  void doSortColumn(int col);
  /// Gone as soon as the items stand in another order: moved, added to, renamed, loaded anew.
  SortMark sortMark();

 private:
  bool isRow(int row) const { return row >= 1 && row < job_.vsContents.Rows(); }
  bool isConfirmed(const MessageBox& question) {
    return desktop_.doShowMessage(question) == Answer::Yes;
  }
  void doArrange(const std::vector<int>& order);
  bool isInOrder(const SortMark& mark) const;

  ActionState& state_;
  Desktop& desktop_;
  Job& job_;
  SortMark mark_;
  std::uint64_t markedRevision_ = 0;  ///< of the table, when the mark was last found true
  std::minstd_rand random_;           ///< never seeded: every start gives the same orders
};

}  // namespace korvenal
