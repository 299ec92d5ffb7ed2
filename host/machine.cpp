#include "host/machine.h"

#include <cstdio>
#include <glib.h>
#include <optional>
#include <utility>

#include <osp/ui/controls/message_box.h>

#include "host/cameras/camera_sources.h"
#include "host/modules/application_library.h"
#include "host/modules/http_module.h"
#include "host/modules/sound_module.h"
#include "host/product.h"
#include "host/script/report.h"
#include "osp/app/registry_file.h"
#include "osp/media/picture/exif.h"
#include "osp/media/picture/picture_within.h"
#include "osp/media/sound/mixed_sound.h"

namespace Host {

namespace {

constexpr int kNoticeMs = 5000;

/// Null where nobody listens, and under the virtual clock, which sound cannot follow.
std::unique_ptr<Osp::Media::SoundOutput> MakeSoundOutput(const Options& options) {
    if (options.isHeadless || options.clock == ClockKind::kVirtual) return nullptr;
    return std::make_unique<Osp::Media::MixedSound>(LoadSoundBackend);
}

/// As "de"; under the virtual clock a run does not depend on its user.
std::string UserLanguage() {
    const std::string name = g_get_language_names()[0];
    return name.substr(0, name.find_first_of("_.@"));
}

std::optional<Osp::Content::EmbeddedInfo> ReadEmbedded(const std::string& realPath) {
    // Not the size in the EXIF, which other programs leave out or do not turn with the picture.
    const auto size = Osp::Media::ReadUprightSize(realPath);
    if (!size) return std::nullopt;
    const auto exif = Osp::Media::ReadExif(realPath);
    return Osp::Content::EmbeddedInfo{exif ? exif->description : "", size->width, size->height};
}

void Tell(const char* text) {
    std::fprintf(stderr, "kivo-camera: %s\n", text);
}

/// Those of the package's own file are not worth ending for: a camera is no less without them.
Outcome<Services> FindServices(const std::string& chosen) {
    if (!chosen.empty()) return ReadServices(chosen);
    const Outcome<Services> own = ReadServices(PackageFolder() + "/share/kivo-camera/services.ini");
    if (own) return own;
    Tell(own.Why().message.c_str());
    return Services{};
}

std::unique_ptr<Osp::Net::Transport> MakeTransport(const Osp::Net::Trust& trust) {
    auto transport = LoadTransport({.trust = trust});
    if (transport) return std::move(*transport);
    Tell(transport.Why().message.c_str());
    return nullptr;
}

void ShowNotice(const char* text) {
    Osp::Ui::Controls::MessageBox box;
    const result r = box.Construct("", text, Osp::Ui::Controls::MessageBoxStyle::kOk, kNoticeMs);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
}

}  // namespace

Outcome<std::unique_ptr<Machine>> Machine::Make(const Options& options,
                                                const std::string& resourceFolder) {
    Parts parts;
    auto services = FindServices(options.services);
    if (!services) return services.Why();
    parts.services = std::move(*services);
    if (!options.authorities.empty()) {
        const Outcome<> check = CheckAuthorities(options.authorities);
        if (!check) return check.Why();
    }
    parts.time = std::make_unique<Time>(options.clock);
    parts.modules = std::make_unique<CameraModules>();
    auto cameras = MakeCameras(options.primary, options.secondary,
                               options.clock == ClockKind::kReal, *parts.modules);
    if (!cameras) return Failure{cameras.Why().message, kExitUsage};
    parts.cameras = std::move(*cameras);
    parts.storage = std::make_unique<Osp::Io::StorageMap>(
        Osp::Io::StorageMap::Options{kProduct, options.dataFolder, resourceFolder});
    parts.prepared = parts.storage->Prepare();
    if (parts.storage->Lock() == result::kDeviceBusy) {
        return Failure{"another KIVO camera is running on " + parts.storage->GetPrivateFolder(),
                       kExitInUse};
    }
    return std::unique_ptr<Machine>(new Machine(options, std::move(parts)));
}

Machine::Machine(const Options& options, Parts parts)
    : time_(std::move(parts.time)),
      modules_(std::move(parts.modules)),
      storage_(std::move(parts.storage)),
      prepared_(parts.prepared),
      settings_(storage_->GetPrivateFolder() + "/registry.ini"),
      contents_(*storage_, ReadEmbedded),
      cameras_(std::move(parts.cameras)),
      sounds_(MakeSoundOutput(options)),
      device_([this] { return cameras_->Count(); }),
      textInput_(options.clock == ClockKind::kVirtual ? "" : UserLanguage()),
      services_(std::move(parts.services.hosts)),
      network_({options.authorities, parts.services.isPlainHttpAllowed}, MakeTransport),
      lifecycle_(settings_) {
    lifecycle_.WatchForeground(
        [this](bool isForeground) { cameras_->SetForeground(isForeground); });
}

Machine::~Machine() = default;

Osp::Base::VirtualClock* Machine::GetVirtualClock() {
    return dynamic_cast<Osp::Base::VirtualClock*>(time_->clock.get());
}

int Machine::Run(EntryFunction entry) {
    TellAboutStorage();
    RebuildPhotoList();
    char name[] = "kivo-camera";
    char* arguments[] = {name, nullptr};
    // The entry's 16 bits cannot tell every failure from success.
    (void)entry(1, arguments);
    if (lifecycle_.HasStarted()) return 0;
    TellWhyItCouldNotStart();
    return kExitFailure;
}

// Before the application takes a photograph and numbers it among the others.
void Machine::RebuildPhotoList() {
    if (!contents_.IsNew()) return;
    for (const std::string& path : PhotoPaths()) {
        Osp::Content::ContentRecord record;
        // One that is no picture or cannot be read is not missed in the list.
        (void)contents_.Register(Osp::Base::String(path), "", "", record);
    }
}

void Machine::TellAboutStorage() {
    if (Osp::Failed(prepared_)) {
        Tell("the folder for photographs cannot be prepared; nothing will be stored there");
    }
    if (contents_.WasDamaged()) {
        Tell("the photo list was damaged and is built anew from the photographs");
    } else if (contents_.IsNewer()) {
        Tell("the photo list is of a newer version and is left alone");
    }
    if (settings_.IsNewer()) {
        Tell("the settings are of a newer version and are left alone; changes will not be kept");
    }
    if (!settings_.WasDamaged()) return;
    Tell("the settings were damaged and have been reset");
    GetLoop().Post(Osp::Base::EventClass::kApplication,
                   [] { ShowNotice("The settings were damaged\nand have been reset."); });
}

void Machine::TellWhyItCouldNotStart() const {
    using Osp::Media::CameraSelection;
    if (cameras_->Count() == 0) {
        Tell("no camera was found");
    } else if (cameras_->Id(CameraSelection::kPrimary).empty()) {
        Tell("there is no back camera, which the application starts with (--primary none)");
    } else {
        Tell("the application could not start");
    }
}

}  // namespace Host
