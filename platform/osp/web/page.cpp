// What is loaded has a generation. Every event of a view is posted with the generation of its time,
// as an application event, and is dropped when another has begun or the control has ended; so a
// listener never hears of what the application itself has given up, and may end the control in the
// middle of its call. Nothing of a page is touched after such a call.
//
// The engine starts from the loop, never while controls draw: that takes it a second.
#include "osp/web/page.h"

#include <algorithm>
#include <utility>

#include "osp/base/event_loop.h"
#include "osp/ui/hit.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"
#include "osp/web/page_drawing.h"

namespace Osp::Web::Controls {

namespace {

using Base::EventClass;
using Base::EventLoop;

constexpr const char* kNoEngine = "There is no display.";

bool IsCurrent(const Ui::Control& control) {
    return Ui::IsIn(control, Ui::Screen::Current().GetCurrentForm());
}

}  // namespace

Page::Page(Web& control) : control_(control), generation_(std::make_shared<unsigned>(0)) {
    // What falls on the page must not reach what is below.
    control_.AddTouchEventListener(*this);
}

Page::~Page() {
    generation_.reset();
    DropView();
}

void Page::DropView() {
    if (!view_) return;
    Ui::TextInput::Current().LeaveOutside(*view_);
    Ui::Screen::Current().GetOutsideViews().Remove(*view_);
    view_.reset();
}

void Page::LoadData(PageData data) {
    data.runsScripts = runsScripts_;
    Load(std::move(data));
}

void Page::Load(Wanted wanted) {
    ++*generation_;
    wanted_ = std::move(wanted);
    if (view_) return Run();
    BeginWhenCurrent();
}

void Page::BeginWhenCurrent() {
    if (!wanted_ || view_ || isBeginning_ || !whyNot_.empty()) return;
    isBeginning_ = true;
    EventLoop::Current().Post(EventClass::kSystem, [this, alive = std::weak_ptr(generation_)] {
        if (!alive.expired()) Begin();
    });
}

void Page::Begin() {
    isBeginning_ = false;
    // Cleared, or another form has come.
    if (!wanted_ || !IsCurrent(control_)) return;
    MakeView();
    if (view_) Run();
}

void Page::MakeView() {
    whyNot_ = kNoEngine;
    if (WebEngine::IsInstalled()) view_ = WebEngine::Current().MakeView(*this, whyNot_);
    if (view_) {
        whyNot_.clear();
        view_->SetZoomLevel(zoomLevel_);
        Ui::Screen::Current().GetOutsideViews().Add(control_, *view_);
    } else {
        control_.SetName(TellWhyNot(whyNot_));
    }
    control_.RequestRedraw();
}

void Page::Run() {
    const Wanted wanted = *std::exchange(wanted_, std::nullopt);
    if (const auto* const url = std::get_if<std::string>(&wanted)) return view_->LoadUrl(*url);
    view_->LoadData(std::get<PageData>(wanted));
}

void Page::Clear() {
    ++*generation_;
    wanted_.reset();
    DropPicture();
    // The engine goes as well: it would keep what the page left, and its memory.
    DropView();
    control_.RequestRedraw();
}

std::string Page::GetUrl() const {
    if (view_) return view_->GetUrl();
    if (!wanted_ || !whyNot_.empty()) return "";
    const auto* const url = std::get_if<std::string>(&*wanted_);
    return url != nullptr ? *url : std::get<PageData>(*wanted_).baseUrl;
}

void Page::GoBack() {
    if (!CanGoBack()) return;
    ++*generation_;
    view_->GoBack();
}

void Page::SetZoomLevel(double level) {
    zoomLevel_ = level;
    if (view_) view_->SetZoomLevel(level);
}

void Page::Later(std::function<void()> task) {
    EventLoop::Current().Post(
        EventClass::kApplication,
        [current = std::weak_ptr(generation_), then = *generation_, task = std::move(task)] {
            const auto now = current.lock();
            if (now && *now == then) task();
        });
}

void Page::OnPageFinished() {
    Later([this] {
        if (loadingListener_ != nullptr) loadingListener_->OnLoadingCompleted();
    });
}

void Page::OnAnswer(const std::string& url, std::shared_ptr<AnswerDecision> decision) {
    Later([this, url, decision = std::move(decision)] {
        auto policy = DecisionPolicy::kRender;
        if (loadingListener_ != nullptr) {
            policy = loadingListener_->OnLoadingDecision(Base::String(std::string_view(url)));
        }
        decision->Make(policy);
    });
}

void Page::OnChunk(Bytes chunk) {
    Later([this, chunk = std::move(chunk)] {
        if (downloadListener_ == nullptr) return;
        Base::ByteBuffer buffer;
        if (Failed(buffer.Construct(static_cast<int>(chunk.size())))) return;
        std::ranges::copy(chunk, buffer.GetPointer());
        downloadListener_->OnWebChunkedDataReceived(buffer);
    });
}

void Page::OnFieldEntered(bool isByTouch) {
    EventLoop::Current().Post(
        EventClass::kSystem, [this, isByTouch, alive = std::weak_ptr(generation_)] {
            if (alive.expired() || !view_ || !IsCurrent(control_)) return;
            Ui::TextInput::Current().FocusOutside(control_, *view_, isByTouch);
        });
}

void Page::OnFieldLeft() {
    EventLoop::Current().Post(EventClass::kSystem, [this, alive = std::weak_ptr(generation_)] {
        if (!alive.expired() && view_) Ui::TextInput::Current().LeaveOutside(*view_);
    });
}

void Page::TakePicture(std::function<void()> taken) {
    if (!view_) return taken();
    view_->TakePicture([this, alive = std::weak_ptr(generation_),
                        taken = std::move(taken)](std::shared_ptr<Graphics::Surface> picture) {
        if (!alive.expired()) {
            picture_ = std::move(picture);
            control_.RequestRedraw();
        }
        taken();
    });
}

void Page::DropPicture() {
    if (!picture_) return;
    picture_.reset();
    control_.RequestRedraw();
}

}  // namespace Osp::Web::Controls
