// The table only repeats what the files say, so it may lose its last rows, and it must never keep
// the camera from starting. Hence: writes are ordered (WAL) but not waited for; every opening
// checks the whole file, which is small; a file that is at fault by itself is told from one that
// merely cannot be had now (no permission, another process), because only the first is set aside;
// and the version is looked at before anything could write, so that one of a newer program is left
// as it was.
//
// Statements are prepared once and used by one caller at a time: a Use binds them in order and
// leaves them reset, or a row that was only begun would hold the lock on the file.
#include "osp/content/database.h"

#include <cassert>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

#include "osp/io/file_descriptor.h"

namespace Osp::Content {

namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr int kBusyTimeoutMs = 200;
constexpr int kVersion = 1;
constexpr int kNoVersion = 0;  // of a file that is empty

// A new database is begun without waiting for the disk, which would delay the start; a power cut at
// that moment leaves at worst one that is set aside and held nothing.
constexpr const char* kBeginSettings = "PRAGMA synchronous = OFF; PRAGMA journal_mode = WAL;";
// Writes are ordered but not waited for: a power cut may undo the last rows, which the files
// themselves bring back.
constexpr const char* kSettings = "PRAGMA synchronous = NORMAL;";
// Ids are never used again, so that one that somebody still holds cannot name another file. Another
// process may have begun the database in the meantime.
constexpr const char* kCreate =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS contents ("
    "  id INTEGER PRIMARY KEY AUTOINCREMENT,"
    "  path TEXT NOT NULL UNIQUE,"
    "  name TEXT NOT NULL,"
    "  description TEXT NOT NULL,"
    "  width INTEGER NOT NULL,"
    "  height INTEGER NOT NULL,"
    "  size_bytes INTEGER NOT NULL,"
    "  date_ms INTEGER NOT NULL) STRICT;"
    "PRAGMA user_version = 1;"
    "COMMIT;";
constexpr const char* kFind =
    "SELECT id, name, description, width, height, size_bytes, date_ms FROM contents"
    " WHERE path = ?1";
constexpr const char* kFindPath = "SELECT path FROM contents WHERE id = ?1";
constexpr const char* kPut =
    "INSERT INTO contents (path, name, description, width, height, size_bytes, date_ms)"
    " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)"
    " ON CONFLICT (path) DO UPDATE SET name = ?2, description = ?3, width = ?4, height = ?5,"
    " size_bytes = ?6, date_ms = ?7"
    " RETURNING id";
constexpr const char* kRemove = "DELETE FROM contents WHERE id = ?1";

result ResultOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_ROW:
        case SQLITE_DONE:
            return result::kSuccess;
        case SQLITE_FULL:
            return result::kStorageFull;
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return result::kPermissionDenied;
        default:
            return result::kIo;
    }
}

/// One use of a prepared statement: bound in order, reset at the end.
class Use {
  public:
    explicit Use(sqlite3_stmt* statement) : statement_(statement) {
        assert(statement_ != nullptr && !sqlite3_stmt_busy(statement_));
    }
    ~Use() {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    Use& Bind(const std::string& text) {
        sqlite3_bind_text64(statement_, ++bound_, text.data(), text.size(), SQLITE_TRANSIENT,
                            SQLITE_UTF8);
        return *this;
    }
    Use& Bind(long long number) {
        sqlite3_bind_int64(statement_, ++bound_, number);
        return *this;
    }
    int Step() {
        assert(bound_ == sqlite3_bind_parameter_count(statement_));
        return sqlite3_step(statement_);
    }

    std::string Text(int column) const {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        return text == nullptr ? std::string() : std::string(text, size);
    }
    long long Number(int column) const { return sqlite3_column_int64(statement_, column); }

  private:
    sqlite3_stmt* statement_;
    int bound_ = 0;
};

bool IsFilesOwnFault(int code) {
    const int primary = code & 0xFF;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || primary == SQLITE_ERROR ||
           primary == SQLITE_MISMATCH;
}

/// Has the file there with the right mode before it is opened as a database.
OpenOutcome Touch(const std::string& file) {
    const Io::FileDescriptor touched(
        open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kOwnerOnly));
    struct stat status;
    if (touched.IsOpen() && fstat(touched.Get(), &status) == 0) {
        return S_ISREG(status.st_mode) ? OpenOutcome::kOpened : OpenOutcome::kUnusable;
    }
    const bool isOwnFault = errno == EISDIR || errno == EACCES || errno == ELOOP || errno == ENXIO;
    return isOwnFault ? OpenOutcome::kUnusable : OpenOutcome::kUnavailable;
}

}  // namespace

std::unique_ptr<Database> Database::Open(const std::string& file, OpenOutcome& outcome) {
    outcome = file == ":memory:" ? OpenOutcome::kOpened : Touch(file);
    if (outcome != OpenOutcome::kOpened) return nullptr;
    std::unique_ptr<Database> database(new Database);
    sqlite3* connection = nullptr;
    int r =
        sqlite3_open_v2(file.c_str(), &connection,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    database->connection_.reset(connection);
    if (r == SQLITE_OK) r = database->SetUp();
    outcome = database->OutcomeOf(r);
    return r == SQLITE_OK ? std::move(database) : nullptr;
}

OpenOutcome Database::OutcomeOf(int code) const {
    if (code == SQLITE_OK) {
        return version_ == kNoVersion ? OpenOutcome::kBegun : OpenOutcome::kOpened;
    }
    if (version_ > kVersion) return OpenOutcome::kNewer;
    return IsFilesOwnFault(code) ? OpenOutcome::kUnusable : OpenOutcome::kUnavailable;
}

int Database::SetUp() {
    sqlite3* connection = connection_.get();
    sqlite3_busy_timeout(connection, kBusyTimeoutMs);
    std::string text;
    int r = QueryText("PRAGMA user_version", text);
    if (r != SQLITE_OK) return r;
    version_ = std::atoi(text.c_str());
    // Before anything that could write.
    if (version_ != kVersion && version_ != kNoVersion) return SQLITE_MISMATCH;
    r = sqlite3_exec(connection, kBeginSettings, nullptr, nullptr, nullptr);
    if (r == SQLITE_OK) r = QueryText("PRAGMA quick_check(1)", text);
    if (r == SQLITE_OK && text != "ok") r = SQLITE_CORRUPT;
    if (r == SQLITE_OK && version_ == kNoVersion) {
        r = sqlite3_exec(connection, kCreate, nullptr, nullptr, nullptr);
    }
    if (r == SQLITE_OK) r = sqlite3_exec(connection, kSettings, nullptr, nullptr, nullptr);
    if (r == SQLITE_OK) r = PrepareStatements();
    return r;
}

int Database::QueryText(const char* query, std::string& text) {
    Statement statement;
    const int r = Prepare(query, statement);
    if (r != SQLITE_OK) return r;
    Use row(statement.get());
    const int stepped = row.Step();
    text = row.Text(0);
    return stepped == SQLITE_ROW ? SQLITE_OK : stepped;
}

int Database::PrepareStatements() {
    int r = Prepare(kFind, find_);
    if (r == SQLITE_OK) r = Prepare(kFindPath, findPath_);
    if (r == SQLITE_OK) r = Prepare(kPut, put_);
    if (r == SQLITE_OK) r = Prepare(kRemove, remove_);
    return r;
}

int Database::Prepare(const char* text, Statement& statement) {
    sqlite3_stmt* prepared = nullptr;
    const int r = sqlite3_prepare_v3(connection_.get(), text, -1, SQLITE_PREPARE_PERSISTENT,
                                     &prepared, nullptr);
    statement.reset(prepared);
    return r;
}

result Database::Find(const std::string& path, ContentRecord& record) {
    Use use(find_.get());
    const int r = use.Bind(path).Step();
    if (r == SQLITE_DONE) return result::kObjectNotFound;
    if (r == SQLITE_ROW) {
        record = {.id = use.Number(0),
                  .name = Base::String(use.Text(1)),
                  .description = Base::String(use.Text(2)),
                  .width = static_cast<int>(use.Number(3)),
                  .height = static_cast<int>(use.Number(4)),
                  .sizeBytes = use.Number(5),
                  .dateMs = use.Number(6)};
    }
    return ResultOf(r);
}

result Database::FindPath(ContentId id, std::string& path) {
    Use use(findPath_.get());
    const int r = use.Bind(id).Step();
    if (r == SQLITE_DONE) return result::kObjectNotFound;
    if (r == SQLITE_ROW) path = use.Text(0);
    return ResultOf(r);
}

result Database::Put(const std::string& path, ContentRecord& record) {
    assert(path.starts_with('/'));
    Use use(put_.get());
    use.Bind(path).Bind(record.name.ToUtf8()).Bind(record.description.ToUtf8());
    use.Bind(record.width).Bind(record.height).Bind(record.sizeBytes).Bind(record.dateMs);
    int r = use.Step();
    if (r != SQLITE_ROW) return ResultOf(r);
    const ContentId id = use.Number(0);
    r = use.Step();  // the row is written once the statement has come to its end
    if (r == SQLITE_DONE) record.id = id;
    return ResultOf(r);
}

result Database::Remove(ContentId id) {
    Use use(remove_.get());
    return ResultOf(use.Bind(id).Step());
}

}  // namespace Osp::Content
