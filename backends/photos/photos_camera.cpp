#include "backends/photos/photos_camera.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <glib.h>
#include <mutex>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "osp/media/camera/camera_pictures.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/picture_file.h"
#include "osp/media/picture/upright.h"

namespace Osp::Media {

namespace {

using Base::ByteBuffer;
using Graphics::Dimension;
using Graphics::Surface;

bool IsUnchanged(const StreamSettings& settings) {
    return settings.zoomStep == 0 && GainsOf(settings.whiteBalance).IsNeutral();
}

/// The bytes of the file at `path`; kUnsupported unless it is a JPEG of `size`.
result ReadJpegOfSize(const std::string& path, const Dimension& size, ByteBuffer& jpeg) {
    EncodedPicture file;
    result r = ReadPictureBytes(path, file);
    Dimension fileSize;
    if (Succeeded(r)) r = ReadJpegSize(file.Bytes(), fileSize);
    if (Failed(r) || fileSize != size) return result::kUnsupported;
    return file.CopyTo(jpeg);
}

int OrientationOf(const std::string& path) {
    const auto exif = ReadExif(path);
    return exif ? exif->orientation : 1;
}

/// Of kBgrx pixels.
void TurnBlockUpright(int orientation, Base::Block& pixels, Dimension& size) {
    if (IsUpright(orientation)) return;
    Base::Block turned(pixels.size());
    TurnUpright(PackedView(pixels.data(), size, PixelLayout::kBgrx), orientation, turned.data());
    if (IsTransposed(orientation)) std::swap(size.width, size.height);
    std::swap(pixels, turned);
}

/// Whether somebody who put the file there will expect to see it.
bool LooksLikePicture(const std::filesystem::path& path) {
    constexpr std::array kExtensions = {".jpg", ".jpeg", ".png"};
    const std::string own = path.extension().string();
    return std::ranges::any_of(kExtensions, [&own](const char* known) {
        return g_ascii_strcasecmp(own.c_str(), known) == 0;
    });
}

/// Once in the life of the process, which may look at a folder through both cameras. Any thread.
void NameUnreadable(const std::string& path) {
    static std::mutex mutex;
    static std::set<std::string> named;
    const std::lock_guard lock(mutex);
    if (!named.insert(path).second) return;
    g_printerr("photos camera: cannot read \"%s\"\n", path.c_str());
}

}  // namespace

/// The files and the last picture that was decoded; preview and stills mostly want the same one.
struct PhotosCamera::Pictures {
    std::vector<std::string> paths;
    CameraSelection selection{};

    std::mutex mutex;  // guards what follows
    std::size_t decodedIndex = 0;
    Base::Block decoded;
    Dimension decodedSize;  // empty while nothing is decoded
    bool isTurned = false;  // it is stored otherwise
    std::size_t shownIndex = 0;
    StreamSettings shownSettings;
    Base::Block shown;  // the I420 frame of that picture with those settings

    bool Decode(std::size_t index);
    bool DecodeFrom(std::size_t& index);
    void Show(std::size_t index, const StreamSettings& settings, ByteBuffer& frame);
    result Take(std::size_t& index, const StreamSettings& settings, ByteBuffer& jpeg);
    PixelView View() const { return PackedView(decoded.data(), decodedSize, PixelLayout::kBgrx); }
};

bool PhotosCamera::Pictures::Decode(std::size_t index) {
    if (decodedSize.width > 0 && decodedIndex == index) return true;
    decodedIndex = index;
    Dimension size;
    const result r = DecodePicture(paths[index], PixelLayout::kBgrx, decoded, size);
    decodedSize = {};
    if (Failed(r)) {
        NameUnreadable(paths[index]);
        return false;
    }
    const int orientation = OrientationOf(paths[index]);
    TurnBlockUpright(orientation, decoded, size);
    isTurned = !IsUpright(orientation);
    decodedSize = size;
    return true;
}

bool PhotosCamera::Pictures::DecodeFrom(std::size_t& index) {
    for (std::size_t tried = 0; tried < paths.size(); ++tried) {
        if (Decode(index)) return true;
        index = (index + 1) % paths.size();
    }
    return false;
}

void PhotosCamera::Pictures::Show(std::size_t index, const StreamSettings& settings,
                                  ByteBuffer& frame) {
    const std::lock_guard lock(mutex);
    const auto bytes = frame.Bytes().size();
    if (shown.size() != bytes || shownIndex != index || shownSettings != settings) {
        Surface surface(settings.previewSize, Surface::Kind::kWithAlpha);
        shownIndex = index;
        shownSettings = settings;
        if (DecodeFrom(index)) DrawToFill(View(), settings.zoomStep, selection, surface);
        WriteFrame(surface, GainsOf(settings.whiteBalance), frame);
        if (shown.size() != bytes) shown = Base::Block(bytes);
        std::ranges::copy(frame.Bytes(), shown.data());
    }
    std::copy_n(shown.data(), bytes, frame.GetPointer());
}

result PhotosCamera::Pictures::Take(std::size_t& index, const StreamSettings& settings,
                                    ByteBuffer& jpeg) {
    const std::lock_guard lock(mutex);
    // Decoded even where the file's own bytes will do: a damaged file must not get through.
    if (!DecodeFrom(index)) return result::kInvalidFormat;
    if (selection == CameraSelection::kPrimary && IsUnchanged(settings) &&
        decodedSize == settings.stillSize && !isTurned &&
        Succeeded(ReadJpegOfSize(paths[index], settings.stillSize, jpeg))) {
        return result::kSuccess;
    }
    Surface surface(settings.stillSize, Surface::Kind::kOpaque);
    DrawToFill(View(), settings.zoomStep, selection, surface);
    return WriteStill(surface, GainsOf(settings.whiteBalance), jpeg);
}

std::unique_ptr<PhotosCamera> PhotosCamera::Make(const std::string& folder,
                                                 CameraSelection selection, std::string& error) {
    auto pictures = std::make_shared<Pictures>();
    pictures->selection = selection;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        FileKind kind{};
        const std::string path = entry->path().string();
        std::error_code notRegular;
        if (!entry->is_regular_file(notRegular)) continue;
        if (Succeeded(ReadFileKind(path, kind))) {
            pictures->paths.push_back(path);
        } else if (LooksLikePicture(entry->path())) {
            NameUnreadable(path);
        }
    }
    if (failure) {
        error = "cannot read the folder \"" + folder + "\": " + failure.message();
        return nullptr;
    }
    if (pictures->paths.empty()) {
        error = "there is no JPEG or PNG file in the folder \"" + folder + "\"";
        return nullptr;
    }
    std::ranges::sort(pictures->paths);
    // The first one that can be read stays decoded for the preview.
    std::size_t first = 0;
    if (!pictures->DecodeFrom(first)) {
        error = "none of the pictures in the folder \"" + folder + "\" can be read";
        return nullptr;
    }
    return std::unique_ptr<PhotosCamera>(new PhotosCamera(folder, selection, std::move(pictures)));
}

PhotosCamera::PhotosCamera(const std::string& folder, CameraSelection selection,
                           std::shared_ptr<Pictures> pictures)
    : GeneratedCamera("photos:" + folder, selection), pictures_(std::move(pictures)) {}

GeneratedCamera::FrameJob PhotosCamera::MakeFrameJob(const StreamSettings& settings, long long) {
    return [pictures = pictures_, settings, index = next_](ByteBuffer& frame) {
        pictures->Show(index, settings, frame);
    };
}

GeneratedCamera::StillJob PhotosCamera::MakeStillJob(const StreamSettings& settings, long long) {
    const auto index = std::make_shared<std::size_t>(next_);
    return {[pictures = pictures_, settings, index](ByteBuffer& jpeg) {
                return pictures->Take(*index, settings, jpeg);
            },
            [this, index] { next_ = (*index + 1) % pictures_->paths.size(); }};
}

}  // namespace Osp::Media
