// Ownership of what libcurl hands out.
#pragma once

#include <curl/curl.h>
#include <new>

#include "osp/base/owner.h"

namespace Osp::Http {

using EasyHandle = Base::Owner<CURL, curl_easy_cleanup>;
using MultiHandle = Base::Owner<CURLM, curl_multi_cleanup>;
using ShareHandle = Base::Owner<CURLSH, curl_share_cleanup>;
using TextList = Base::Owner<curl_slist, curl_slist_free_all>;

/// Throws std::bad_alloc, which leaves the list as it was.
inline void Append(TextList& list, const char* text) {
    curl_slist* const longer = curl_slist_append(list.get(), text);
    if (longer == nullptr) throw std::bad_alloc();
    (void)list.release();
    list.reset(longer);
}

}  // namespace Osp::Http
