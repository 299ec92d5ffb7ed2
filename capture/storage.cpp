#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>
#include <osp/io/dir_enumerator.h>
#include <osp/io/directory.h>
#include <osp/ui/controls/message_box.h>

#include "app/model/photo_description.h"
#include "app/model/photo_folders.h"
#include "app/model/photo_number.h"
#include "capture/main_form.h"
#include "effects/composition.h"
#include "effects/conversions/rgba.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

namespace {

constexpr int kRoomForTextBytes = 48 << 20;

/// What the user can do something about.
constexpr std::pair<result, const char*> kReasons[] = {
    {result::kStorageFull, "the storage is full"},
    {result::kPermissionDenied, "the folder is read-only"},
    {result::kFileNotFound, "the folder is not there"},
    {result::kOutOfMemory, "there is not enough memory"},
};

const char* ReasonOf(result r) {
    const auto* const reason =
        std::ranges::find(kReasons, r, &std::pair<result, const char*>::first);
    return reason == std::end(kReasons) ? "reading or writing failed" : reason->second;
}

void WarnThatWritingFailed(result reason) {
    std::fprintf(stderr, "kivo-camera: the photograph was not stored: %s\n", ReasonOf(reason));
    // Text takes a typeface and threads, without which its libraries end the process.
    ByteBuffer room;
    if (reason == result::kOutOfMemory && Osp::Failed(room.Construct(kRoomForTextBytes))) return;
    room = ByteBuffer();
    try {
        Osp::Ui::Controls::MessageBox box;
        const result r = box.Construct("WARNING", "File writing error",
                                       Osp::Ui::Controls::MessageBoxStyle::kOk, 0);
        if (Osp::Succeeded(r)) (void)box.ShowAndWait();
    } catch (const std::bad_alloc&) {
        // Not even enough for the box; it has been said above.
    }
}

result ListNames(const String& folder, std::vector<std::string>& names) {
    Osp::Io::Directory directory;
    const result r = directory.Construct(folder);
    if (Osp::Failed(r)) return r;
    const std::unique_ptr<Osp::Io::DirEnumerator> entries(directory.ReadN());
    if (!entries) return directory.GetLastResult();
    while (Osp::Succeeded(entries->MoveNext())) {
        names.push_back(entries->GetCurrentDirEntry().GetName().ToUtf8());
    }
    return result::kSuccess;
}

}  // namespace

result MainForm::SaveToFile(ByteBuffer* frame, bool composed, bool hdr) {
    const CameraType type = setting_->GetCameraType();
    if (type == CameraType::kMix) setting_->EnablePreview(false);  // the pair is complete

    result r = result::kOutOfMemory;
    try {
        r = ComposeAndStore(*frame, composed, hdr);
    } catch (const std::bad_alloc&) {
        // Whatever ran out of it, what had been begun has been taken back on the way here.
    }
    if (Osp::Failed(r)) WarnThatWritingFailed(r);
    return r;
}

result MainForm::ComposeAndStore(ByteBuffer& frame, bool composed, bool hdr) {
    const auto [width, height] = setting_->GetCaptureDimension();
    ByteBuffer picture;
    const result r = picture.Construct(width * height * Effects::kBytesPerPixel);
    if (Osp::Failed(r)) return r;
    if (composed) {
        Effects::ComposePhotograph(MakeJob(), hdr, View(frame), View(accumulation_), View(picture));
    } else if (hdr) {
        HDR(&frame, &picture);
    } else {
        std::ranges::copy(frame.Bytes(), picture.GetPointer());
    }

    const String description(ComposePhotoDescription(
        setting_->GetCameraType(), setting_->GetPhotoEffect(), setting_->GetZoomLevel(), hdr));
    const StorageType storage = setting_->GetStorageType();
    const result stored = StorePicture(picture, FolderOf(storage), description);
    // A card that is away, or was pulled just now, does not take the photograph with it.
    const bool isCardGone = storage == StorageType::kMemoryCard && !IsCardThere();
    if (Osp::Succeeded(stored) || !isCardGone) return stored;
    return StorePicture(picture, kPhoneFolder, description);
}

result MainForm::StorePicture(const ByteBuffer& picture, const String& folder,
                              const String& description) {
    std::vector<std::string> names;
    // Without the names in use, a number could be one that is taken.
    result r = ListNames(folder, names);
    if (Osp::Failed(r)) return r;
    const Osp::Graphics::Dimension size = setting_->GetCaptureDimension();
    const bool isTurned = !IsPrimary();  // the front sensor is mounted a quarter turn
    ByteBuffer pixels;
    r = pixels.Construct(size.width * size.height * Effects::kBytesPerRgbaPixel);
    if (Osp::Failed(r)) return r;
    Effects::ConvertToRgba(View(picture), isTurned, pixels.GetPointer());

    Osp::Graphics::Bitmap bitmap;
    r = bitmap.Construct(std::move(pixels),
                         isTurned ? Osp::Graphics::Dimension{size.height, size.width} : size,
                         Osp::Graphics::BitmapPixelFormat::kArgb8888);
    if (Osp::Failed(r)) return r;
    int number = HighestPhotoNumber(names);
    String path;
    do {
        const std::string name = PhotoFileName(++number);
        path = folder;
        path.Append("/").Append(String(name));
        // Past 9999 a number comes again, and the older photograph has to make room. One that was
        // not there a moment ago is another program's, which has been quicker: the next number.
        const bool overwrite = std::ranges::count(names, name) > 0;
        image_->SetDescription(description);
        r = image_->EncodeToFile(bitmap, Osp::Media::ImageFormat::kJpeg, path, overwrite);
    } while (r == result::kKeyAlreadyExists);
    if (Osp::Succeeded(r)) Register(path, description);
    return r;
}

// The photograph is on disk with its description; a failing registration is not worth a warning.
void MainForm::Register(const String& path, const String& description) {
    Osp::Content::ImageContentInfo info;
    if (Osp::Failed(info.Construct(path, "", false))) return;
    info.SetDescription(description);
    Osp::Content::ContentManager manager;
    if (Osp::Succeeded(manager.Construct())) (void)manager.CreateContent(info);
}

}  // namespace Kivo
