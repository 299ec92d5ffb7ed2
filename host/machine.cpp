#include "machine.h"

#include <cstdio>
#include <optional>
#include <utility>

#include <osp/ui/controls/message_box.h>

#include "app/registry_file.h"
#include "media/exif.h"
#include "media/mixed_sound.h"
#include "sound_module.h"

namespace Host {

namespace {

constexpr int kNoticeMs = 5000;

std::unique_ptr<Osp::Base::Clock> MakeClock(ClockKind kind) {
    if (kind == ClockKind::kVirtual) return std::make_unique<Osp::Base::VirtualClock>();
    return std::make_unique<Osp::Base::RealClock>();
}

/// Null where nobody listens, and under the virtual clock, which sound cannot follow.
std::unique_ptr<Osp::Media::SoundOutput> MakeSoundOutput(const Options& options) {
    if (options.isHeadless || options.clock == ClockKind::kVirtual) return nullptr;
    return std::make_unique<Osp::Media::MixedSound>(LoadSoundBackend);
}

std::optional<Osp::Content::EmbeddedInfo> ReadEmbedded(const std::string& realPath) {
    const auto exif = Osp::Media::ReadExif(realPath);
    if (!exif) return std::nullopt;
    return Osp::Content::EmbeddedInfo{exif->description, exif->size.width, exif->size.height};
}

void ShowNotice(const char* text) {
    Osp::Ui::Controls::MessageBox box;
    const result r = box.Construct("", text, Osp::Ui::Controls::MessageBoxStyle::kOk, kNoticeMs);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
}

}  // namespace

std::unique_ptr<Machine> Machine::Make(const Options& options, const std::string& resourceFolder,
                                       std::string& error) {
    auto cameras = Osp::Media::CameraService::Make(options.primary, options.secondary, error);
    if (!cameras) return nullptr;
    return std::unique_ptr<Machine>(new Machine(options, resourceFolder, std::move(cameras)));
}

Machine::Machine(const Options& options, const std::string& resourceFolder,
                 std::unique_ptr<Osp::Media::CameraService> cameras)
    : clock_(MakeClock(options.clock)),
      loop_(*clock_),
      storage_({options.dataFolder, resourceFolder}),
      prepared_(storage_.Prepare()),
      registry_(storage_.GetPrivateFolder() + "/registry.ini"),
      contents_(storage_, ReadEmbedded),
      cameras_(std::move(cameras)),
      sounds_(MakeSoundOutput(options)),
      device_([this] { return cameras_->Count(); }),
      lifecycle_(registry_) {}

Machine::~Machine() = default;

Osp::Base::VirtualClock* Machine::GetVirtualClock() {
    return dynamic_cast<Osp::Base::VirtualClock*>(clock_.get());
}

int Machine::Run(EntryFunction entry) {
    if (Osp::Failed(prepared_)) {
        std::fprintf(stderr,
                     "kivo-camera: the folder for photographs cannot be prepared; "
                     "nothing will be stored there\n");
    }
    TellAboutDamage();
    char name[] = "kivo-camera";
    char* arguments[] = {name, nullptr};
    // The entry's 16 bits cannot tell every failure from success.
    (void)entry(1, arguments);
    if (lifecycle_.HasStarted()) return 0;
    TellWhyItCouldNotStart();
    return 1;
}

void Machine::TellAboutDamage() {
    if (contents_.WasDamaged()) {
        std::fprintf(stderr,
                     "kivo-camera: the photo list was damaged and is built anew from the "
                     "photographs\n");
    }
    if (!registry_.GetFile().WasDamaged()) return;
    std::fprintf(stderr, "kivo-camera: the settings were damaged and have been reset\n");
    loop_.Post(Osp::Base::EventClass::kApplication,
               [] { ShowNotice("The settings were damaged\nand have been reset."); });
}

void Machine::TellWhyItCouldNotStart() {
    const char* const reason =
        cameras_->Count() == 0 ? "no camera was found" : "the application could not start";
    std::fprintf(stderr, "kivo-camera: %s\n", reason);
}

}  // namespace Host
