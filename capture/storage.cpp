#include <string>
#include <vector>

#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>
#include <osp/io/dir_enumerator.h>
#include <osp/io/directory.h>
#include <osp/ui/controls/message_box.h>

#include "composition.h"
#include "main_form.h"
#include "photo_description.h"
#include "photo_folders.h"
#include "photo_number.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

namespace {

void WarnThatWritingFailed() {
    Osp::Ui::Controls::MessageBox box;
    const result r =
        box.Construct("WARNING", "File writing error", Osp::Ui::Controls::MessageBoxStyle::kOk, 0);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
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

    String path(FolderOf(setting_->GetStorageType()));
    std::vector<std::string> names;
    result r = ListNames(path, names);
    if (Osp::Failed(r)) {
        // Without the names in use, a number could be one that is taken.
        WarnThatWritingFailed();
        return r;
    }

    const auto [width, height] = setting_->GetCaptureDimension();
    ByteBuffer picture;
    r = picture.Construct(width * height * Effects::kBytesPerPixel);
    if (Osp::Failed(r)) return r;
    if (composed) {
        Effects::ComposePhotograph(MakeJob(), hdr, View(*frame), View(accumulation_),
                                   View(picture));
    } else if (hdr) {
        HDR(frame, &picture);
    } else {
        std::copy(frame->Bytes().begin(), frame->Bytes().end(), picture.GetPointer());
    }

    path.Append("/").Append(String(PhotoFileName(HighestPhotoNumber(names) + 1)));
    const String description(
        ComposePhotoDescription(type, setting_->GetPhotoEffect(), setting_->GetZoomLevel(), hdr));
    r = StorePicture(picture, path, description);
    if (Osp::Failed(r)) {
        WarnThatWritingFailed();
        return r;
    }
    Register(path, description);
    return result::kSuccess;
}

result MainForm::StorePicture(const ByteBuffer& picture, const String& path,
                              const String& description) {
    const Osp::Graphics::Dimension size = setting_->GetCaptureDimension();
    const bool isTurned =
        Effects::IsTurned(static_cast<std::uint8_t>(setting_->GetCameraSelection()));
    ByteBuffer pixels;
    result r = pixels.Construct(size.width * size.height * Effects::kBytesPerRgbaPixel);
    if (Osp::Failed(r)) return r;
    Effects::ConvertToRgba(View(picture), isTurned, pixels.GetPointer());

    Osp::Graphics::Bitmap bitmap;
    r = bitmap.Construct(pixels,
                         isTurned ? Osp::Graphics::Dimension{size.height, size.width} : size,
                         Osp::Graphics::BitmapPixelFormat::kArgb8888);
    if (Osp::Failed(r)) return r;
    image_->SetDescription(description);
    return image_->EncodeToFile(bitmap, Osp::Media::ImageFormat::kJpeg, path, true);
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
