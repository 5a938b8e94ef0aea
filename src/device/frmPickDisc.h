#pragma once

#include <string>
#include <vector>

#include "device/HandFeeder.h"
#include "platform/Desktop.h"
#include "platform/Form.h"
#include "platform/Table.h"

namespace korvenal {

/// Columns of `frmPickDisc::vsDisc`.
enum PickDiscColumn : int {
  PickDiscName = 0,
  PickDiscLabel = 1,
  PickDiscType = 2,
  PickDiscDate = 3,
};

/// The choice of one disc among all of the shelf, or of an image file anywhere. Outcome: `file`.
class frmPickDisc : public Form {
 public:
  /// `discs` come in the order of the list; `wanted` says in words what the run asks for.
  frmPickDisc(Desktop& desktop, std::vector<ShelfDisc> discs, std::string shelf,
              std::string wanted);

  Table vsDisc;  ///< the discs that hold all words of the filter; `vsDisc.Row` is the chosen one
  std::string filter;  ///< words, case ignored
  std::string wanted;
  std::string file;  ///< the disc to put in; empty while none is chosen

  bool pbOKEnabled() const { return vsDisc.Row > 0; }
  /// Discs on the shelf, whatever the filter.
  int discCount() const { return static_cast<int>(discs_.size()); }

  void doFilter(const std::string& text);
  void doChooseRow(int row);
  void pbOK();
  void pbCancel() { doCloseBox(); }
  /// Asks for an image file outside of the shelf.
  void pbImageFile();

 private:
  struct Line {
    std::vector<std::string> texts;
    std::string folded;  ///< all texts without case, for the filter
    std::string file;
  };
  void doFillTable();

  Desktop& desktop_;
  std::string shelf_;
  std::vector<Line> discs_;
  std::vector<std::string> shown_;  ///< files of the rows of `vsDisc`, from row 1 on
};

/// What a disc is called in lists: the name of its file without the extension.
std::string shelfNameOf(const ImageDisc& disc);
/// Its label, or "blank" or "damaged".
std::string discStateText(const ImageDisc& disc);

}  // namespace korvenal
