#include "host/script/page_pictures.h"

#include <osp/web/controls/web.h>

#include "osp/base/event_loop.h"
#include "osp/ui/visible_controls.h"
#include "osp/web/page.h"

namespace Host {

namespace {

template <class Task>
void ForEachPage(const Task& task) {
    Osp::Ui::WalkScreen([&](const Osp::Ui::Control& control) {
        const auto* const web = dynamic_cast<const Osp::Web::Controls::Web*>(&control);
        if (web != nullptr) task(Osp::Web::Controls::Page::Of(*web));
    });
}

}  // namespace

void TakePagePictures() {
    ForEachPage([](Osp::Web::Controls::Page& page) {
        Osp::Base::EventLoop& loop = Osp::Base::EventLoop::Current();
        page.TakePicture([&loop, work = loop.BeginWork()] { loop.CompleteWork(work, [] {}); });
    });
}

void DropPagePictures() {
    ForEachPage([](Osp::Web::Controls::Page& page) { page.DropPicture(); });
}

}  // namespace Host
