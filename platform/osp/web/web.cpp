#include <algorithm>
#include <cctype>
#include <memory>
#include <string>
#include <string_view>

#include <osp/web/controls/web.h>

#include "osp/graphics/surface.h"
#include "osp/ui/access.h"
#include "osp/web/page.h"
#include "osp/web/page_drawing.h"

namespace Osp::Web::Controls {

namespace {

constexpr std::string_view kSchemes[] = {"http://", "https://"};
constexpr double kMostZoom = 4;

bool IsOfTheWeb(std::string_view url) {
    return std::ranges::any_of(kSchemes, [url](std::string_view scheme) {
        if (url.size() <= scheme.size()) return false;
        return std::ranges::equal(url.substr(0, scheme.size()), scheme, [](char a, char b) {
            return std::tolower(static_cast<unsigned char>(a)) == b;
        });
    });
}

}  // namespace

Web::Web() : page_(std::make_unique<Page>(*this)) {}

Web::~Web() = default;

result Web::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.IsEmpty()) return result::kInvalidArgument;
    SetBounds(bounds);
    return result::kSuccess;
}

void Web::SetLoadingListener(ILoadingListener* listener) {
    page_->SetLoadingListener(listener);
}

void Web::SetDownloadListener(IWebDownloadListener* listener) {
    page_->SetDownloadListener(listener);
}

result Web::LoadUrl(const Base::String& url) {
    std::string text = url.ToUtf8();
    if (!IsOfTheWeb(text)) return result::kInvalidArgument;
    page_->LoadUrl(std::move(text));
    return result::kSuccess;
}

result Web::LoadData(const Base::String& baseUrl, const Base::ByteBuffer& content,
                     const Base::String& mimeType, const Base::String& encoding) {
    const auto bytes = content.Remaining();
    page_->LoadData({baseUrl.ToUtf8(), Bytes(bytes.begin(), bytes.end()), mimeType.ToUtf8(),
                     encoding.ToUtf8()});
    return result::kSuccess;
}

void Web::SetScriptsEnabled(bool enabled) {
    page_->SetScriptsEnabled(enabled);
}

void Web::Clear() {
    page_->Clear();
}

Base::String Web::GetUrl() const {
    return Base::String(std::string_view(page_->GetUrl()));
}

bool Web::CanGoBack() const {
    return page_->CanGoBack();
}

void Web::GoBack() {
    page_->GoBack();
}

result Web::SetZoomLevel(double level) {
    if (!(level > 0 && level <= kMostZoom)) return result::kInvalidArgument;
    page_->SetZoomLevel(level);
    return result::kSuccess;
}

result Web::OnDraw() {
    page_->BeginWhenCurrent();
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    if (!page_->WhyNot().empty()) return DrawWhyNot(*canvas, page_->WhyNot());
    return DrawPicture(*canvas, *Ui::Access::Picture(*this), page_->GetPicture());
}

}  // namespace Osp::Web::Controls
