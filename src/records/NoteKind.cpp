#include "records/NoteKind.h"

#include "platform/Text.h"

namespace korvenal {

NoteKind noteKind(std::string_view note) {
  if (Text::startsWith(note, "Error:") || Text::startsWith(note, "Failed") ||
      note == "No file restored." || Text::endsWith(note, " error."))
    return NoteKind::Bad;
  if (note.empty() || note.front() == '*' || note == "Action stop by user." ||
      note == "Skip blank disc.")
    return NoteKind::Undone;
  return NoteKind::Good;
}

}  // namespace korvenal
