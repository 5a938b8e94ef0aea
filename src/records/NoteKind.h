#pragma once

#include <string_view>

namespace korvenal {

/// What the note of a disc or backup record tells.
enum class NoteKind {
  Good,
  Undone,  ///< stopped, not finished, left as it was: nothing went wrong, nothing is to be relied
           ///< on
  Bad,     ///< a disc or files failed
};

NoteKind noteKind(std::string_view note);

}  // namespace korvenal
