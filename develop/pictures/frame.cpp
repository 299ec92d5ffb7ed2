#include "develop/pictures/frame.h"

#include <new>
#include <system_error>
#include <utility>

#include "osp/media/picture/exif.h"
#include "osp/media/picture/upright.h"

namespace Kivo::Tools {

using Osp::Graphics::Dimension;
using Osp::Media::IsTransposed;
using Osp::Media::IsUpright;

Problem Frame::Load(Bytes file, bool inBackground) {
    Stop();
    Problem problem = ReadPictureSize(file, size_);
    if (!problem.empty()) return problem;
    const auto exif = Osp::Media::ReadExif(file);
    orientation_ = exif ? exif->orientation : 1;
    if (IsTransposed(orientation_)) std::swap(size_.width, size_.height);
    const std::size_t sizeBytes = Osp::Media::PackedSize(size_, Osp::Media::PixelLayout::kRgb);
    pixels_.Fit(sizeBytes);
    if (!IsUpright(orientation_)) stored_.Fit(sizeBytes);
    rowsDone_ = 0;
    if (!inBackground || !DecodeInBackground(file)) Decode(file);
    return {};
}

bool Frame::DecodeInBackground(Bytes file) try {
    decoder_ = std::jthread([this, file] { Decode(file); });
    return true;
} catch (const std::system_error&) {
    return false;  // no more threads for this user
}

int Frame::WaitForMore(int rows) const {
    for (;;) {
        const int done = rowsDone_.load(std::memory_order_acquire);
        if (done == kDamaged || done > rows) return done;
        rowsDone_.wait(done, std::memory_order_acquire);
    }
}

bool Frame::WaitForAll() const {
    return WaitForMore(size_.height - 1) != kDamaged;
}

void Frame::Decode(Bytes file) try {
    const auto announce = [this](int rows) { Announce(rows); };
    failure_ = IsUpright(orientation_)
                   ? DecodePicture(file, size_, pixels_.data(), announce, oddity_)
                   : DecodeTurned(file);
    Announce(Osp::Succeeded(failure_) ? size_.height : kDamaged);
} catch (const std::bad_alloc&) {
    failure_ = result::kOutOfMemory;
    Announce(kDamaged);  // nobody else waits for a thread's exceptions
}

result Frame::DecodeTurned(Bytes file) {
    Dimension stored = size_;
    if (IsTransposed(orientation_)) std::swap(stored.width, stored.height);
    const auto nobodyWaits = [](int) {};
    const result r = DecodePicture(file, stored, stored_.data(), nobodyWaits, oddity_);
    if (Osp::Failed(r)) return r;
    const auto view = PackedView(stored_.data(), stored, Osp::Media::PixelLayout::kRgb);
    TurnUpright(view, orientation_, pixels_.data());
    stored_ = {};
    return r;
}

void Frame::Announce(int rows) {
    rowsDone_.store(rows, std::memory_order_release);
    rowsDone_.notify_all();
}

}  // namespace Kivo::Tools
