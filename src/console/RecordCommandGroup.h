#pragma once

#include <string>

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that show and export what runs have left behind.
class RecordCommandGroup {
 public:
  explicit RecordCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doShowTable(const Table& table, const std::string& whenEmpty);
  ExitCode doReport(const Arguments& arguments);
  ExitCode doExport(const Arguments& arguments);
  ExitCode doPrint(const Arguments& arguments);

  struct NamedTable {
    const Table* table = nullptr;  ///< null: there is none
    std::string title;             ///< of its print
  };
  /// A table by its name, "vsEvent(1)"; the page in action when none is named.
  NamedTable tableNamed(const std::string& name) const;
  /// The same for a table with data; anything else is told.
  NamedTable findTable(const std::string& name) const;

  Session& session_;
};

}  // namespace korvenal::console
