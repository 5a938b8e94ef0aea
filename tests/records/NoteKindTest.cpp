#include "records/NoteKind.h"

#include <gtest/gtest.h>

namespace korvenal::test {
namespace {

/// A note of the wrong kind is a failure that nobody sees, or a false alarm in red.
TEST(NoteKind, EveryNoteOfARunIsOfItsKind) {
  const struct {
    NoteKind kind;
    std::vector<std::string> notes;
  } kinds[] = {
      {NoteKind::Good,
       {"Success.", "Success. 12 files restored.", "Success. 1 file restored. 3 files skipped.",
        "Success. 2 files skipped.", "Full backup.", "Differential backup."}},
      {NoteKind::Undone, {"", "* Uncompleted.", "Action stop by user.", "Skip blank disc."}},
      {NoteKind::Bad,
       {"Error: Disc is not writable.", "Error: Disc may be damaged/corrupted.", "Failed.",
        "Failed: Unable to erase disc.", "Failed: Insufficient HDD space.", "No file restored.",
        "1 backup file error.", "4 backup files error.", "1 file error.",
        "12 files restored. 1 file skipped. 2 files error."}},
  };
  for (const auto& [kind, notes] : kinds)
    for (const std::string& note : notes) EXPECT_EQ(noteKind(note), kind) << note;
}

}  // namespace
}  // namespace korvenal::test
