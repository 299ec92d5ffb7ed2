#include "host/script/report.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <typeinfo>
#include <utility>

#include <osp/io/dir_enumerator.h>
#include <osp/io/directory.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/message_box.h>
#include <osp/ui/controls/overlay_panel.h>
#include <osp/ui/controls/panel.h>
#include <osp/ui/controls/popup.h>
#include <osp/web/controls/web.h>

#include "host/cameras/camera_report.h"
#include "osp/app/lifecycle.h"
#include "osp/app/registry_file.h"
#include "osp/base/owner.h"
#include "osp/content/content_store.h"
#include "osp/media/camera/camera_service.h"
#include "osp/media/sound/sound_service.h"
#include "osp/ui/access.h"
#include "osp/ui/modal_layer.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"
#include "osp/ui/visible_controls.h"

namespace Host {

using Json = nlohmann::ordered_json;
using Osp::Ui::Control;

namespace {

constexpr const char* kPhotoFolders[] = {"/Media/Images", "/Storagecard/Media/Images"};
constexpr const char* kPhotoPrefix = "KIVO";

std::string ClassName(const Control& control) {
    int status = 0;
    const Osp::Base::Owner<char, std::free> name(
        abi::__cxa_demangle(typeid(control).name(), nullptr, nullptr, &status));
    const std::string full = name ? name.get() : "";
    const auto colon = full.rfind(':');
    return colon == std::string::npos ? full : full.substr(colon + 1);
}

const char* KindOf(const Control& control) {
    if (dynamic_cast<const Osp::Ui::Controls::Button*>(&control)) return "button";
    if (dynamic_cast<const Osp::Ui::Controls::Label*>(&control)) return "label";
    if (dynamic_cast<const Osp::Ui::Controls::EditArea*>(&control)) return "edit";
    if (dynamic_cast<const Osp::Ui::Controls::Popup*>(&control)) return "popup";
    if (dynamic_cast<const Osp::Ui::ModalLayer*>(&control)) return "message";
    if (dynamic_cast<const Osp::Ui::Controls::OverlayPanel*>(&control)) return "overlay";
    if (dynamic_cast<const Osp::Ui::Controls::Panel*>(&control)) return "panel";
    if (dynamic_cast<const Osp::Ui::Controls::Form*>(&control)) return "form";
    if (dynamic_cast<const Osp::Web::Controls::Web*>(&control)) return "web";
    return "control";
}

/// Without query and fragment, in which secrets stand.
std::string AddressOf(const Osp::Web::Controls::Web& web) {
    const std::string url = web.GetUrl().ToUtf8();
    return url.substr(0, url.find_first_of("?#"));
}

Json Describe(const Control& control) {
    const Osp::Graphics::Rectangle bounds = control.GetScreenBounds();
    Json json;
    json["kind"] = KindOf(control);
    if (const auto* button = dynamic_cast<const Osp::Ui::Controls::Button*>(&control)) {
        json["id"] = button->GetActionId();
    }
    json["bounds"] = {bounds.x, bounds.y, bounds.width, bounds.height};
    json["text"] = Osp::Ui::TextOf(control);
    if (const auto* web = dynamic_cast<const Osp::Web::Controls::Web*>(&control)) {
        json["url"] = AddressOf(*web);
    }
    json["enabled"] = control.IsEnabled();
    if (&control == Osp::Ui::Screen::Current().GetFocus()) json["focused"] = true;
    const auto& input = Osp::Ui::TextInput::Current();
    if (&control == input.GetTarget() || &control == input.GetOutsideTarget()) {
        json["edited"] = true;
    }
    return json;
}

bool IsSecret(const std::string& key) {
    return key.find("TOKEN") != std::string::npos;
}

}  // namespace

std::string CurrentFormName() {
    const auto* const form = Osp::Ui::Screen::Current().GetCurrentForm();
    return form == nullptr ? "" : ClassName(*form);
}

bool IsTextVisible(const std::string& text) {
    bool isVisible = false;
    Osp::Ui::WalkScreen([&](const Control& control) {
        isVisible = isVisible || Osp::Ui::TextOf(control).find(text) != std::string::npos;
    });
    return isVisible;
}

bool HasPreview() {
    bool isCovered = false;
    bool hasPreview = false;
    Osp::Ui::WalkScreen([&](const Control& control) {
        const auto* panel = dynamic_cast<const Osp::Ui::Controls::OverlayPanel*>(&control);
        hasPreview =
            hasPreview || (panel && !isCovered && Osp::Ui::Access::VideoPicture(*panel) != nullptr);
        isCovered = isCovered || control.GetScreenBounds().Size() == Osp::Ui::Screen::kSize;
    });
    return hasPreview;
}

std::vector<std::string> PhotoPaths() {
    std::vector<std::string> paths;
    for (const char* folder : kPhotoFolders) {
        Osp::Io::Directory directory;
        if (Osp::Failed(directory.Construct(folder))) continue;
        const std::unique_ptr<Osp::Io::DirEnumerator> entries(directory.ReadN());
        while (entries && Osp::Succeeded(entries->MoveNext())) {
            const std::string name = entries->GetCurrentDirEntry().GetName().ToUtf8();
            if (name.starts_with(kPhotoPrefix)) paths.push_back(std::string(folder) + "/" + name);
        }
    }
    return paths;
}

std::string ScreenReport() {
    Json json;
    json["form"] = CurrentFormName();
    json["controls"] = Json::array();
    Osp::Ui::WalkScreen(
        [&](const Control& control) { json["controls"].push_back(Describe(control)); });
    return json.dump();
}

std::string PhotosReport() {
    Json json;
    json["photos"] = Json::array();
    for (const std::string& path : PhotoPaths()) {
        Osp::Content::ContentRecord record;
        const result r =
            Osp::Content::ContentStore::Current().Describe(Osp::Base::String(path), record);
        if (Osp::Failed(r)) continue;
        json["photos"].push_back({{"path", path},
                                  {"width", record.width},
                                  {"height", record.height},
                                  {"bytes", record.sizeBytes},
                                  {"description", record.description.ToUtf8()}});
    }
    return json.dump();
}

std::string RegistryReport() {
    Json json;
    json["registry"] = Json::object();
    for (const auto& [key, value] : Osp::App::Lifecycle::Current().GetSettings().Values()) {
        if (const int* number = std::get_if<int>(&value)) {
            json["registry"][key] = *number;
        } else {
            json["registry"][key] = IsSecret(key) ? "***" : std::get<std::string>(value);
        }
    }
    return json.dump();
}

std::string SoundsReport() {
    Json json;
    json["sounds"] = Osp::Media::SoundService::Current().TakeStarted();
    return json.dump();
}

std::string CamerasReport(CameraModules& modules) {
    using Osp::Media::CameraSelection;
    auto& service = Osp::Media::CameraService::Current();
    Json places;
    for (const auto& [place, selection] : {std::pair{"primary", CameraSelection::kPrimary},
                                           std::pair{"secondary", CameraSelection::kSecondary}}) {
        const Osp::Media::CameraSlot& slot = service.Slot(selection);
        if (!slot.Exists()) {
            places[place] = nullptr;
            continue;
        }
        places[place] = {{"source", slot.device->Id()},
                         {"connected", slot.isConnected},
                         {"inUse", slot.user != nullptr}};
    }
    const Json report = {{"cameras", places},
                         {"found", CamerasAsJson(LookForCameras(modules, Ways::kInUse))}};
    return report.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace Host
