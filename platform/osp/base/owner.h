// Ownership of what a library hands out.
#pragma once

#include <memory>

namespace Osp::Base {

/// Ends an object with a function, whose result nobody needs.
template <auto free>
struct FreeWith {
    template <class T>
    void operator()(T* object) const {
        (void)free(object);
    }
};

/// Owns what `free` ends: Owner<std::FILE, std::fclose>.
template <class T, auto free>
using Owner = std::unique_ptr<T, FreeWith<free>>;

}  // namespace Osp::Base
