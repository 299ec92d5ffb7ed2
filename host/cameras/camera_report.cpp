#include "host/cameras/camera_report.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>

namespace Host {

using nlohmann::json;
using Osp::Media::BackendReport;
using Osp::Media::CameraInfo;
using Osp::Media::VideoMode;

namespace {

constexpr std::array kFormatNames = {"I420", "NV12", "YUY2", "MJPEG"};
constexpr std::array kFacingNames = {"unknown", "back", "front"};

template <class Enumeration, std::size_t size>
std::string NameIn(const std::array<const char*, size>& names, Enumeration value) {
    return names.at(static_cast<std::size_t>(value));
}

std::string SizeText(const VideoMode& mode) {
    std::string text = std::to_string(mode.size.width) + "x" + std::to_string(mode.size.height);
    if (mode.framesASecond > 0) text += "@" + std::to_string(mode.framesASecond);
    return text;
}

std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::string SourceOf(const WayReport& way, const CameraInfo& camera) {
    return way.way + ":" + camera.id;
}

std::string CameraText(const WayReport& way, const CameraInfo& camera) {
    std::string text = SourceOf(way, camera) + "\n    " + camera.name +
                       ", looks: " + NameIn(kFacingNames, camera.facing) + "\n";
    std::map<std::string, std::vector<std::string>> sizes;  // by format
    for (const VideoMode& mode : camera.modes) {
        sizes[NameIn(kFormatNames, mode.format)].push_back(SizeText(mode));
    }
    for (const auto& [format, list] : sizes) {
        text += "    " + format + ": " + Joined(list, " ") + "\n";
    }
    if (!camera.users.empty()) text += "    in use by: " + Joined(camera.users, ", ") + "\n";
    return text;
}

json CameraJson(const WayReport& way, const CameraInfo& camera) {
    json modes = json::array();
    for (const VideoMode& mode : camera.modes) {
        modes.push_back({{"format", NameIn(kFormatNames, mode.format)},
                         {"width", mode.size.width},
                         {"height", mode.size.height},
                         {"framesASecond", mode.framesASecond}});
    }
    return {{"source", SourceOf(way, camera)},
            {"backend", way.way},
            {"id", camera.id},
            {"name", camera.name},
            {"looks", NameIn(kFacingNames, camera.facing)},
            {"modes", modes},
            {"users", camera.users}};
}

}  // namespace

std::vector<WayReport> LookForCameras(CameraModules& modules, Ways ways) {
    std::vector<WayReport> reports;
    for (const CameraWay way : kCameraWays) {
        if (ways == Ways::kInUse && !modules.IsLoaded(way)) continue;
        WayReport& entry = reports.emplace_back();
        entry.way = NameOf(way);
        const auto backend = modules.Get(way);
        if (backend) {
            entry.report = (*backend)->Look(true);
        } else {
            entry.report.problems.push_back(backend.Why().message);
        }
    }
    return reports;
}

std::string CamerasAsText(const std::vector<WayReport>& reports) {
    std::string text;
    for (const WayReport& way : reports) {
        for (const CameraInfo& camera : way.report.cameras) text += CameraText(way, camera);
    }
    return text.empty() ? "no real camera was found; --diagnose says why\n" : text;
}

std::string WaysAsText(const std::vector<WayReport>& reports) {
    std::string text;
    for (const WayReport& way : reports) {
        const std::size_t count = way.report.cameras.size();
        text += way.way + ": " + std::to_string(count) + (count == 1 ? " camera\n" : " cameras\n");
        for (const std::string& note : way.report.notes) text += "    " + note + "\n";
        for (const std::string& problem : way.report.problems) {
            text += "    problem: " + problem + "\n";
        }
    }
    return text;
}

json CamerasAsJson(const std::vector<WayReport>& reports) {
    json cameras = json::array();
    for (const WayReport& way : reports) {
        for (const CameraInfo& camera : way.report.cameras) {
            cameras.push_back(CameraJson(way, camera));
        }
    }
    return cameras;
}

json WaysAsJson(const std::vector<WayReport>& reports) {
    json ways = json::array();
    for (const WayReport& way : reports) {
        ways.push_back({{"backend", way.way},
                        {"cameras", way.report.cameras.size()},
                        {"notes", way.report.notes},
                        {"problems", way.report.problems}});
    }
    return ways;
}

}  // namespace Host
