// Values by their names.
#pragma once

#include <memory>

#include <osp/base/collection/ilist.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Base::Collection {

/// Holds pointers to keys and values; destroying the map deletes neither, RemoveAll(true) both. One
/// thread at a time.
class HashMap : public Object {
  public:
    HashMap();
    ~HashMap() override;
    HashMap(const HashMap&) = delete;
    HashMap& operator=(const HashMap&) = delete;

    /// Reserves room for `capacity` entries; the map grows beyond. kInvalidArgument unless
    /// `capacity` is at least 0 and `loadFactor`, in entries a bucket, above 0; kMapConstruction
    /// when constructed already or without the memory.
    result Construct(int capacity, float loadFactor);

    /// Neither is null. kKeyAlreadyExists, changing nothing, for a key that equals one in the map;
    /// kInvalidState before construction. The caller keeps both then.
    result Add(String* key, Object* value);
    /// Null when there is none.
    Object* GetValue(const String& key) const;
    int GetCount() const;
    /// The keys in no order that means anything: a new list, the caller's, of keys that are not.
    IList* GetKeysN() const;
    /// Empties the map; with `deleteElements`, deletes what was in it.
    void RemoveAll(bool deleteElements);

  private:
    struct Entries;

    std::unique_ptr<Entries> entries_;  // null before construction
};

}  // namespace Osp::Base::Collection
