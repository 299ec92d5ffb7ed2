#include "backends/web/page_history.h"

#include <utility>

namespace Osp::Web {

namespace {

WebKitBackForwardListItem* Kept(WebKitBackForwardListItem* item) {
    return item == nullptr ? nullptr : static_cast<WebKitBackForwardListItem*>(g_object_ref(item));
}

}  // namespace

PageHistory::Item PageHistory::Current() const {
    return Item(Kept(
        webkit_back_forward_list_get_current_item(webkit_web_view_get_back_forward_list(view_))));
}

PageHistory::Item PageHistory::Before() const {
    return Item(
        Kept(webkit_back_forward_list_get_back_item(webkit_web_view_get_back_forward_list(view_))));
}

void PageHistory::BeginWithUrl() {
    data_.reset();
    first_.reset();
}

void PageHistory::BeginWithData(PageData data) {
    data_ = std::move(data);
    first_.reset();
}

void PageHistory::PageCommitted() {
    if (!first_) first_ = Current();
}

bool PageHistory::CanGoBack() const {
    return first_ && (data_ || (Before() && Current() != first_));
}

std::optional<PageData> PageHistory::GoBack() {
    // A page may have put itself in the place of the first.
    if (data_ && (Current() == first_ || !Before())) return data_;
    webkit_web_view_go_back(view_);
    return std::nullopt;
}

}  // namespace Osp::Web
