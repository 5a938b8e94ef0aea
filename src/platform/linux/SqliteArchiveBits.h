#pragma once

#include <sqlite3.h>

#include <memory>

#include "platform/ArchiveBits.h"

namespace korvenal {

/// Archive bits in a database file, which is made when first needed. A damaged one is made anew:
/// all bits are then set, and the next backup saves everything.
class SqliteArchiveBits : public ArchiveBits {
 public:
  explicit SqliteArchiveBits(std::string file);
  ~SqliteArchiveBits() override;

  bool doHasArchiveBit(const std::string& path, const FileInfo& info) override;
  void doClearArchiveBit(const std::string& path, const FileInfo& info) override;
  void begin() override;
  void commit() override;

 private:
  struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  struct EndStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, EndStatement>;

  /// Opens the database when that has not been tried in vain.
  bool isOpen();
  int open();
  int checkLayout();
  /// Runs a statement that gives no rows.
  bool run(const char* statement);
  Statement prepare(const char* statement);
  /// Closes the database after a failed call, and removes the file when it is damaged.
  void fail(int code);

  std::string file_;
  std::unique_ptr<sqlite3, CloseDatabase> database_;
  Statement find_;
  Statement store_;
  int attemptsLeft_ = 2;  ///< the second one meets a new file in place of a damaged one
  bool bracketed_ = false;
};

}  // namespace korvenal
