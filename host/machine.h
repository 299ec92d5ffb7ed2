// The phone that the application runs on: every platform service, put in place.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/cameras/camera_modules.h"
#include "host/mail_hand_over.h"
#include "host/options.h"
#include "host/outcome.h"
#include "host/services.h"
#include "host/time.h"
#include "osp/app/lifecycle.h"
#include "osp/app/registry_file.h"
#include "osp/app/service_hosts.h"
#include "osp/content/content_store.h"
#include "osp/io/storage_map.h"
#include "osp/media/camera/camera_service.h"
#include "osp/media/sound/sound_service.h"
#include "osp/net/network.h"
#include "osp/system/device.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"

namespace Host {

/// The application's entry.
using EntryFunction = int (*)(int argc, char** argv);

/// Chooses what stands behind each interface from the options. One at a time in a process; the
/// thread that makes it is the loop thread.
class Machine {
  public:
    /// Fails when a camera source or a file that an option names is wrong, or another process uses
    /// the data folder.
    /// `resourceFolder` holds the files of "/Res".
    static Outcome<std::unique_ptr<Machine>> Make(const Options& options,
                                                  const std::string& resourceFolder);
    ~Machine();

    /// Runs the application from start to end. Returns 0, or 1 when it could not start.
    int Run(EntryFunction entry);

    CameraModules& GetCameraModules() { return *modules_; }
    Osp::Base::EventLoop& GetLoop() { return time_->loop; }
    /// Null under the real clock.
    Osp::Base::VirtualClock* GetVirtualClock();

  private:
    struct Parts {
        std::unique_ptr<Time> time;
        std::unique_ptr<CameraModules> modules;
        std::unique_ptr<Osp::Media::CameraService> cameras;
        std::unique_ptr<Osp::Io::StorageMap> storage;
        result prepared{};
        Services services;
    };

    Machine(const Options& options, Parts parts);

    void RebuildPhotoList();
    void TellAboutStorage();
    void TellWhyItCouldNotStart() const;

    std::unique_ptr<Time> time_;
    std::unique_ptr<CameraModules> modules_;
    std::unique_ptr<Osp::Io::StorageMap> storage_;
    Osp::Io::StorageMap::Installed installedStorage_{*storage_};
    result prepared_;
    Osp::App::RegistryFile settings_;
    Osp::Content::ContentStore contents_;
    Osp::Content::ContentStore::Installed installedContents_{contents_};
    std::unique_ptr<Osp::Media::CameraService> cameras_;
    Osp::Media::CameraService::Installed installedCameras_{*cameras_};
    Osp::Media::SoundService sounds_;
    Osp::Media::SoundService::Installed installedSounds_{sounds_};
    Osp::System::Device device_;
    Osp::System::Device::Installed installedDevice_{device_};
    Osp::Ui::Screen screen_;
    Osp::Ui::Screen::Installed installedScreen_{screen_};
    Osp::Ui::Input input_;
    Osp::Ui::Input::Installed installedInput_{input_};
    Osp::Ui::TextInput textInput_;
    Osp::Ui::TextInput::Installed installedTextInput_{textInput_};
    Osp::App::ServiceHosts services_;
    Osp::App::ServiceHosts::Installed installedServices_{services_};
    Osp::Net::Network network_;
    Osp::Net::Network::Installed installedNetwork_{network_};
    MailHandOver mail_;
    Osp::App::MailProgram::Installed installedMail_{mail_};
    Osp::App::Lifecycle lifecycle_;
    Osp::App::Lifecycle::Installed installedLifecycle_{lifecycle_};
};

}  // namespace Host
