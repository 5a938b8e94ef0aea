#pragma once

#include <string>

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Table.h"

namespace korvenal {

/// What is written around the rows of an exported table. Either text may be empty.
struct ExportFrame {
  std::string header;
  std::string footer;
};

/// Asks for a file and writes the table there as text for people and other programs: every row that
/// is not hidden, the header row included, one line each; columns that are not hidden, joined by a
/// tab. Tabs and line breaks inside a cell become blanks, so that a line stays a row. An older file
/// is replaced as a whole. Success also when there is nothing to do: a table without data, which is
/// not asked about, or no file chosen.
/// Yields; the rows and texts of the table stay as they are meanwhile.
FileOutcome doExportGrid(Desktop& desktop, Files& files, const Table& table,
                         const ExportFrame& frame = {});

/// Prints a table under its title and today's date; a table without data is not printed.
void doPrintGrid(Desktop& desktop, const Clock& clock, const Table& table,
                 const std::string& title);

}  // namespace korvenal
