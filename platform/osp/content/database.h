// The table of registered files.
#pragma once

#include <memory>
#include <sqlite3.h>
#include <string>

#include <osp/base/result.h>

#include "osp/base/owner.h"
#include "osp/content/content_store.h"

namespace Osp::Content {

/// What opening came to.
enum class OpenOutcome {
    kOpened,
    kBegun,        ///< there was none, or an empty one
    kNewer,        ///< one of a later version, which has not been written to
    kUnusable,     ///< by the file's own fault
    kUnavailable,  ///< by that of its surroundings: no space, no permission, held by a process
};

/// Paths are virtual, in UTF-8. A failed change leaves the table as it was: kStorageFull,
/// kPermissionDenied, kIo.
class Database {
  public:
    /// Opens the database at the real path `file`, or begins one there, readable for its owner
    /// only; ":memory:" is one of its own that ends with the object. Null unless kOpened or kBegun.
    static std::unique_ptr<Database> Open(const std::string& file, OpenOutcome& outcome);
    /// Leaves the database in one file.
    ~Database() = default;

    /// kObjectNotFound leaves `record` alone.
    result Find(const std::string& path, ContentRecord& record);
    result FindPath(ContentId id, std::string& path);

    /// Adds or replaces the row of `path`; its id, which a replaced row keeps, goes to `record`.
    result Put(const std::string& path, ContentRecord& record);
    result Remove(ContentId id);

  private:
    using Connection = Base::Owner<sqlite3, sqlite3_close>;
    using Statement = Base::Owner<sqlite3_stmt, sqlite3_finalize>;

    Database() = default;
    int SetUp();
    OpenOutcome OutcomeOf(int code) const;
    int QueryText(const char* query, std::string& text);
    int PrepareStatements();
    int Prepare(const char* text, Statement& statement);

    int version_ = 0;        // of the file when it was opened
    Connection connection_;  // outlives the statements
    Statement find_;
    Statement findPath_;
    Statement put_;
    Statement remove_;
};

}  // namespace Osp::Content
