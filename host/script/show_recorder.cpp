#include "host/script/show_recorder.h"

#include <cairo.h>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace Host {

std::optional<std::string> SaveScreenshot(const std::string& path) {
    const Osp::Graphics::Surface& screen = Osp::Ui::Screen::Current().Compose();
    const cairo_status_t status = cairo_surface_write_to_png(screen.Cairo(), path.c_str());
    if (status == CAIRO_STATUS_SUCCESS) return std::nullopt;
    return "cannot write " + path + ": " + cairo_status_to_string(status);
}

ShowRecorder::ShowRecorder(Osp::Ui::Presenter* next) : next_(next) {
    Osp::Ui::Screen::Current().SetPresenter(this);
}

ShowRecorder::~ShowRecorder() {
    Osp::Ui::Screen::Current().SetPresenter(next_);
}

std::optional<std::string> ShowRecorder::RecordTo(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) return "cannot create " + folder + ": " + error.message();
    folder_ = folder;
    count_ = 0;
    return std::nullopt;
}

void ShowRecorder::FrameWanted() {
    if (next_ != nullptr) next_->FrameWanted();
}

void ShowRecorder::PresentNow() {
    if (next_ != nullptr) next_->PresentNow();
    if (folder_.empty()) return;
    char name[32];
    std::snprintf(name, sizeof name, "/show-%04d.png", count_++);
    if (const auto error = SaveScreenshot(folder_ + name)) {
        std::fprintf(stderr, "kivo-camera: %s\n", error->c_str());
    }
}

}  // namespace Host
