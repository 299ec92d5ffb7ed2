#include "host/script/show_recorder.h"

#include <cairo.h>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace Host {

Outcome<> SaveScreenshot(const std::string& path) {
    const Osp::Graphics::Surface& screen = Osp::Ui::Screen::Current().Compose();
    const cairo_status_t status = cairo_surface_write_to_png(screen.Cairo(), path.c_str());
    if (status == CAIRO_STATUS_SUCCESS) return kDone;
    return Failure{"cannot write " + path + ": " + cairo_status_to_string(status)};
}

ShowRecorder::ShowRecorder(Osp::Ui::Presenter* next) : next_(next) {
    Osp::Ui::Screen::Current().SetPresenter(this);
}

ShowRecorder::~ShowRecorder() {
    Osp::Ui::Screen::Current().SetPresenter(next_);
}

Outcome<> ShowRecorder::RecordTo(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) return Failure{"cannot create " + folder + ": " + error.message()};
    folder_ = folder;
    count_ = 0;
    return kDone;
}

void ShowRecorder::FrameWanted() {
    if (next_ != nullptr) next_->FrameWanted();
}

void ShowRecorder::PresentNow() {
    if (next_ != nullptr) next_->PresentNow();
    if (folder_.empty()) return;
    char name[32];
    std::snprintf(name, sizeof name, "/show-%04d.png", count_++);
    const Outcome<> saved = SaveScreenshot(folder_ + name);
    if (!saved) std::fprintf(stderr, "kivo-camera: %s\n", saved.Why().message.c_str());
}

}  // namespace Host
