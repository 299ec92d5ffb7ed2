// Ownership of what GLib hands out.
#pragma once

#include <glib.h>
#include <memory>

namespace Osp::Base {

/// Deletes with a function of the library's.
template <auto free>
struct FreeWith {
    template <class T>
    void operator()(T* object) const {
        free(object);
    }
};

using OptionContextOwner = std::unique_ptr<GOptionContext, FreeWith<g_option_context_free>>;
using ErrorOwner = std::unique_ptr<GError, FreeWith<g_error_free>>;

}  // namespace Osp::Base
