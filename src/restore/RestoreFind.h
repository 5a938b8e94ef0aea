#pragma once

#include <string>

#include "platform/Desktop.h"
#include "restore/RestorePage.h"

namespace korvenal {

/// Finds rows of the tree by a part of their name.
class RestoreFind {
 public:
  RestoreFind(RestorePage& page, Desktop& desktop) : page_(page), desktop_(desktop) {}

  /// The first row whose name holds the text. On a match the folders above it are opened and the
  /// row becomes the current one.
  bool doFindString(const std::string& text, bool matchCase);
  /// The next match behind the last one. Tells when there is none, and starts at the top again.
  void doFindNext();

 private:
  int findFrom(int row) const;
  void showMatch(int row);
  int firstRowToSearch(const std::string& text, bool matchCase) const;

  /// What was found last from the top: a longer text can stand no further up.
  struct Last {
    std::string text;
    int row = 0;
  };
  Last last_;
  RestorePage& page_;
  Desktop& desktop_;
};

/// The dialog that asks for a name.
class frmFind : public Form {
 public:
  frmFind(RestoreFind& find, RestorePage& page, Desktop& desktop);

  std::string txName;
  bool matchCase = false;

  bool pbOKEnabled() const;
  /// Closes on a match; otherwise tells so and stays.
  void pbOK();
  void pbCancel() { doClose(); }

 private:
  RestoreFind& find_;
  Desktop& desktop_;
};

}  // namespace korvenal
