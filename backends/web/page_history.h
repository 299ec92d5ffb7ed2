// The way back over links.
#pragma once

#include <optional>
#include <webkit/webkit.h>

#include "osp/base/owner.h"
#include "osp/web/web_engine.h"

namespace Osp::Web {

/// The engine's own list knows nothing of pages that were given, and goes back over what the
/// application has loaded itself. Here the way back ends at what that loaded last.
class PageHistory {
  public:
    /// Not owned; outlives this object.
    explicit PageHistory(WebKitWebView* view) : view_(view) {}

    /// What the application loads now.
    void BeginWithUrl();
    void BeginWithData(PageData data);
    /// A page is there.
    void PageCommitted();

    bool CanGoBack() const;
    /// The given page that is to be shown again; none when the engine itself goes back.
    std::optional<PageData> GoBack();

  private:
    using Item = Base::Owner<WebKitBackForwardListItem, g_object_unref>;

    Item Current() const;
    Item Before() const;

    WebKitWebView* view_;
    std::optional<PageData> data_;  // which the way back ends with; none for a URL
    Item first_;  // the first that was fetched since, in the engine's list; null before
};

}  // namespace Osp::Web
