#include "osp/content/content_store.h"

#include <cerrno>
#include <initializer_list>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "osp/base/trace.h"
#include "osp/content/database.h"
#include "osp/io/errno_result.h"
#include "osp/io/safe_file.h"
#include "osp/io/storage_map.h"

namespace Osp::Content {

namespace {

constexpr const char* kFileName = "/contents.db";

/// The state of a file by which one that was written again is told from what is registered.
result ReadFileState(const std::string& realPath, ContentRecord& record) {
    struct stat status;
    if (stat(realPath.c_str(), &status) != 0) return Io::ResultOfErrno(errno);
    if (!S_ISREG(status.st_mode)) return result::kFileNotFound;
    record.sizeBytes = status.st_size;
    record.dateMs = status.st_mtim.tv_sec * 1000LL + status.st_mtim.tv_nsec / 1'000'000;
    return result::kSuccess;
}

Base::String FirstFilled(std::initializer_list<Base::String> candidates) {
    for (const Base::String& candidate : candidates) {
        if (!candidate.IsEmpty()) return candidate;
    }
    return {};
}

bool SetDatabaseAside(const std::string& file) {
    if (!Io::SetAside(file)) return false;
    // Its log must not be taken for that of the new one.
    Io::SetAside(file + "-wal");
    unlink((file + "-shm").c_str());
    return true;
}

}  // namespace

ContentStore::ContentStore(Io::StorageMap& storage, EmbeddedInfoReader reader)
    : storage_(storage), reader_(std::move(reader)) {
    const std::string file = storage_.GetPrivateFolder() + kFileName;
    OpenOutcome outcome = OpenOutcome::kOpened;
    database_ = Database::Open(file, outcome);
    if (outcome == OpenOutcome::kUnusable && SetDatabaseAside(file)) {
        wasDamaged_ = true;
        database_ = Database::Open(file, outcome);
    }
    isNew_ = database_ && outcome == OpenOutcome::kBegun;
    isNewer_ = outcome == OpenOutcome::kNewer;
    if (!database_) database_ = Database::Open(":memory:", outcome);
}

ContentStore::~ContentStore() = default;

/// What the store has to say of a file.
struct ContentStore::Answer {
    std::string key;
    ContentRecord record;
    bool isRegistered = false;
};

result ContentStore::Look(const Base::String& path, const Base::String& name,
                          const Base::String& description, Answer& answer) {
    std::string realPath;
    result r = storage_.Resolve(path, Io::Access::kRead, realPath);
    ContentRecord fresh;
    if (Succeeded(r)) r = ReadFileState(realPath, fresh);
    if (Failed(r)) return r;

    answer.key = path.ToUtf8();
    ContentRecord& registered = answer.record;
    r = database_->Find(answer.key, registered);
    if (Failed(r) && r != result::kObjectNotFound) return r;
    answer.isRegistered = Succeeded(r) && registered.sizeBytes == fresh.sizeBytes &&
                          registered.dateMs == fresh.dateMs;
    if (answer.isRegistered) return result::kSuccess;

    const EmbeddedInfo embedded = reader_(realPath).value_or(EmbeddedInfo{});
    fresh.name = FirstFilled({name, Base::String(answer.key.substr(answer.key.rfind('/') + 1))});
    // A file that a program wrote again without its description is still the same picture.
    fresh.description =
        FirstFilled({description, Base::String(embedded.description), registered.description});
    fresh.width = embedded.width;
    fresh.height = embedded.height;
    answer.record = fresh;
    return result::kSuccess;
}

result ContentStore::Register(const Base::String& path, const Base::String& name,
                              const Base::String& description, ContentRecord& record) {
    Answer answer;
    result r = Look(path, name, description, answer);
    if (Succeeded(r) && !answer.isRegistered) {
        r = database_->Put(answer.key, answer.record);
        Base::Trace::Mark("registered");
    }
    if (Succeeded(r)) record = answer.record;
    return r;
}

result ContentStore::Describe(const Base::String& path, ContentRecord& record) {
    Answer answer;
    const result r = Look(path, "", "", answer);
    if (Succeeded(r)) record = answer.record;
    return r;
}

result ContentStore::Delete(ContentId id) {
    std::string path;
    std::string realPath;
    result r = database_->FindPath(id, path);
    if (Succeeded(r)) r = storage_.Resolve(Base::String(path), Io::Access::kWrite, realPath);
    if (Failed(r)) return r;
    if (unlink(realPath.c_str()) != 0 && errno != ENOENT) return Io::ResultOfErrno(errno);
    return database_->Remove(id);
}

}  // namespace Osp::Content
