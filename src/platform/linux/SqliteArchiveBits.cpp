#include "platform/linux/SqliteArchiveBits.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/Descriptor.h"

namespace korvenal {

namespace {

constexpr int Layout = 2;  ///< stands in the file as `user_version`
constexpr int LayoutWithoutChange = 1;
constexpr const char* CreateTable =
    "CREATE TABLE saved (path BLOB PRIMARY KEY, size INTEGER, seconds INTEGER, "
    "nanoseconds INTEGER, inode INTEGER, changed INTEGER, changedNanoseconds INTEGER) "
    "WITHOUT ROWID; PRAGMA user_version = 2";
/// Rows of the older layout have no change time and hold without one: else the first differential
/// backup after an update would be a full one.
constexpr const char* AddChange =
    "BEGIN; ALTER TABLE saved ADD COLUMN changed INTEGER; "
    "ALTER TABLE saved ADD COLUMN changedNanoseconds INTEGER; PRAGMA user_version = 2; COMMIT";

/// Puts a statement back for its next use, whatever became of this one.
class Use {
 public:
  Use(sqlite3_stmt* statement, const std::string& path) : statement_(statement) {
    // A blob: paths need not be UTF-8.
    sqlite3_bind_blob64(statement_, 1, path.data(), path.size(), SQLITE_STATIC);
  }
  ~Use() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;

  int step() { return sqlite3_step(statement_); }

 private:
  sqlite3_stmt* statement_;
};

std::int64_t inodeOf(const FileInfo& info) {
  return static_cast<std::int64_t>(info.inode);
}

}  // namespace

SqliteArchiveBits::SqliteArchiveBits(std::string file) : file_(std::move(file)) {}

SqliteArchiveBits::~SqliteArchiveBits() = default;

bool SqliteArchiveBits::doHasArchiveBit(const std::string& path, const FileInfo& info) {
  if (!isOpen()) return true;
  int result = SQLITE_ERROR;
  bool same = false;
  {
    Use find(find_.get(), path);
    result = find.step();
    const auto column = [&](int at) { return sqlite3_column_int64(find_.get(), at); };
    same = result == SQLITE_ROW && column(0) == info.size.whole() && column(1) == info.modified &&
           column(2) == info.modifiedNanoseconds && column(3) == inodeOf(info);
    if (same && sqlite3_column_type(find_.get(), 4) != SQLITE_NULL)
      same = column(4) == info.changed && column(5) == info.changedNanoseconds;
  }
  if (result != SQLITE_ROW && result != SQLITE_DONE) fail(result);
  return !same;
}

void SqliteArchiveBits::doClearArchiveBit(const std::string& path, const FileInfo& info) {
  if (info.kind != FileInfo::Kind::File || !isOpen()) return;
  int result = SQLITE_ERROR;
  {
    Use store(store_.get(), path);
    const std::int64_t values[] = {info.size.whole(), info.modified, info.modifiedNanoseconds,
                                   inodeOf(info),     info.changed,  info.changedNanoseconds};
    int at = 1;
    for (const std::int64_t value : values) sqlite3_bind_int64(store_.get(), ++at, value);
    result = store.step();
  }
  if (result != SQLITE_DONE) fail(result);
}

void SqliteArchiveBits::begin() {
  bracketed_ = true;
  if (isOpen() && sqlite3_get_autocommit(database_.get()) != 0) run("BEGIN");
}

void SqliteArchiveBits::commit() {
  bracketed_ = false;
  if (database_ && sqlite3_get_autocommit(database_.get()) == 0 && !run("COMMIT"))
    fail(sqlite3_errcode(database_.get()));
}

bool SqliteArchiveBits::isOpen() {
  while (!database_ && attemptsLeft_ > 0) {
    --attemptsLeft_;
    const int result = open();
    if (result != SQLITE_OK) fail(result);
  }
  return database_ != nullptr;
}

int SqliteArchiveBits::open() {
  sqlite3* opened = nullptr;
  // Which files a person backs up is nobody else's business; the library would let all read it.
  // Closed before the library opens it: a close afterwards would end the library's locks.
  constexpr mode_t Private = 0600;
  Descriptor(::open(file_.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, Private)).reset();
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int result = sqlite3_open_v2(file_.c_str(), &opened, flags, nullptr);
  database_.reset(opened);
  if (result != SQLITE_OK) return result;
  // Locked once for as long as it is open: a lock for each of a million questions takes longer
  // than the answers.
  if (!run("PRAGMA locking_mode = EXCLUSIVE")) return sqlite3_errcode(opened);
  if (const int error = checkLayout(); error != SQLITE_OK) return error;
  find_ = prepare(
      "SELECT size, seconds, nanoseconds, inode, changed, changedNanoseconds FROM saved "
      "WHERE path = ?1");
  store_ = prepare("INSERT OR REPLACE INTO saved VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)");
  // Without its table the file is as useless as a damaged one.
  if (!find_ || !store_) return SQLITE_NOTADB;
  if (bracketed_) run("BEGIN");
  return SQLITE_OK;
}

int SqliteArchiveBits::checkLayout() {
  const Statement ask = prepare("PRAGMA user_version");
  if (!ask || sqlite3_step(ask.get()) != SQLITE_ROW) return sqlite3_errcode(database_.get());
  const int layout = sqlite3_column_int(ask.get(), 0);
  const char* missing = layout == 0                     ? CreateTable
                        : layout == LayoutWithoutChange ? AddChange
                                                        : nullptr;
  if (missing == nullptr) return layout == Layout ? SQLITE_OK : SQLITE_NOTADB;
  sqlite3_reset(ask.get());  // it would hold the table
  return run(missing) ? SQLITE_OK : sqlite3_errcode(database_.get());
}

void SqliteArchiveBits::fail(int code) {
  find_.reset();
  store_.reset();
  database_.reset();
  const int kind = code & 0xFF;  // without what the library adds to tell more
  if (kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB) {
    ::unlink(file_.c_str());
    ::unlink((file_ + "-journal").c_str());
  } else {
    attemptsLeft_ = 0;
  }
}

bool SqliteArchiveBits::run(const char* statement) {
  return sqlite3_exec(database_.get(), statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqliteArchiveBits::Statement SqliteArchiveBits::prepare(const char* statement) {
  sqlite3_stmt* prepared = nullptr;
  sqlite3_prepare_v3(database_.get(), statement, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  return Statement(prepared);
}

}  // namespace korvenal
