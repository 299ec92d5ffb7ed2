#include "script_commands.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include <osp/base/integer.h>

#include "app/lifecycle.h"
#include "base/event_loop.h"
#include "media/camera_service.h"
#include "report.h"
#include "show_recorder.h"
#include "ui/input.h"

namespace Host {

using Osp::Base::EventClass;
using Osp::Base::EventLoop;
using Osp::Graphics::Point;
using Osp::Ui::Input;
using std::chrono::milliseconds;

namespace {

using Words = std::vector<std::string>;
using Error = std::optional<std::string>;

constexpr int kAwaitMs = 10000;
constexpr int kDragSteps = 10;
constexpr int kDragStepMs = 10;

/// Thrown while a line is being read; ends up as the line's failing step.
struct BadCommand {
    std::string reason;
};

int Number(const std::string& word) {
    int value = 0;
    if (Osp::Failed(Osp::Base::Integer::Parse(Osp::Base::String(word), value))) {
        throw BadCommand{"'" + word + "' is not a number"};
    }
    return value;
}

int NumberAt(const Words& words, std::size_t index) {
    if (index >= words.size()) throw BadCommand{"a number is missing"};
    return Number(words[index]);
}

const std::string& WordAt(const Words& words, std::size_t index) {
    if (index >= words.size()) throw BadCommand{"a word is missing"};
    return words[index];
}

Point PointAt(const Words& words, std::size_t index) {
    return {NumberAt(words, index), NumberAt(words, index + 1)};
}

// The application may wait for a box inside what a command causes, so a command only posts.
Step Posted(std::function<void()> task) {
    return ActionStep{[task = std::move(task)]() -> Error {
        EventLoop::Current().Post(EventClass::kSystem, task);
        return std::nullopt;
    }};
}

Step Press(Point p) {
    return Posted([p] { Input::Current().Press(p); });
}
Step Move(Point p) {
    return Posted([p] { Input::Current().Move(p); });
}
Step Release(Point p) {
    return Posted([p] { Input::Current().Release(p); });
}

Step Print(std::string (*report)()) {
    return ActionStep{[report]() -> Error {
        std::printf("%s\n", report().c_str());
        std::fflush(stdout);
        return std::nullopt;
    }};
}

Steps Drag(const Words& words) {
    const Point from = PointAt(words, 1);
    const Point to = PointAt(words, 3);
    const int count = words.size() > 5 ? NumberAt(words, 5) : kDragSteps;
    if (count < 1) throw BadCommand{"a drag has at least one step"};
    Steps steps{Press(from)};
    for (int i = 1; i <= count; ++i) {
        steps.push_back(WaitStep{milliseconds(kDragStepMs)});
        steps.push_back(
            Move({from.x + (to.x - from.x) * i / count, from.y + (to.y - from.y) * i / count}));
    }
    steps.push_back(Release(to));
    return steps;
}

Steps Key(const Words& words) {
    static const std::map<std::string, Osp::Ui::KeyCode> kKeys{
        {"camera", Osp::Ui::KeyCode::kCamera},
        {"soft0", Osp::Ui::KeyCode::kSoftKey0},
        {"soft1", Osp::Ui::KeyCode::kSoftKey1},
        {"back", Osp::Ui::KeyCode::kBack}};
    const auto found = kKeys.find(WordAt(words, 1));
    if (found == kKeys.end()) throw BadCommand{"no such key"};
    const Osp::Ui::KeyCode code = found->second;
    return {Posted([code] { Input::Current().KeyPress(code); }),
            Posted([code] { Input::Current().KeyRelease(code); })};
}

struct Condition {
    std::function<bool()> isSo;
    std::string failure;
    int limitMs;
};

/// "form NAME", "text TEXT" or "photos N", each with optional milliseconds; "preview".
Condition ReadCondition(const Words& words) {
    const std::string& kind = WordAt(words, 1);
    Words rest(words.begin() + 2, words.end());
    int limitMs = kAwaitMs;
    const bool mayHaveLimit = rest.size() > 1 || kind == "preview";
    if (mayHaveLimit && !rest.empty()) {
        int value = 0;
        if (Osp::Succeeded(Osp::Base::Integer::Parse(Osp::Base::String(rest.back()), value))) {
            limitMs = value;
            rest.pop_back();
        }
    }
    if (kind == "preview") return {HasPreview, "there is no preview", limitMs};
    std::string argument;
    for (const std::string& word : rest) argument += (argument.empty() ? "" : " ") + word;
    if (argument.empty()) throw BadCommand{"a word is missing"};
    if (kind == "form") {
        return {[argument] { return CurrentFormName() == argument; }, "it is another form",
                limitMs};
    }
    if (kind == "text") {
        return {[argument] { return IsTextVisible(argument); }, "it is not on the screen", limitMs};
    }
    if (kind == "photos") {
        const auto count = static_cast<std::size_t>(Number(argument));
        return {[count] { return PhotoPaths().size() == count; }, "it is another number", limitMs};
    }
    throw BadCommand{"no such condition"};
}

Steps Await(const Words& words) {
    Condition condition = ReadCondition(words);
    return {AwaitStep{condition.isSo, milliseconds(condition.limitMs), condition.failure}};
}

Steps Expect(const Words& words) {
    Condition condition = ReadCondition(words);
    return {ActionStep{[condition]() -> Error {
        if (condition.isSo()) return std::nullopt;
        return condition.failure;
    }}};
}

Steps Connect(const Words& words, bool connect) {
    const std::string& which = WordAt(words, 1);
    if (which != "primary" && which != "secondary") throw BadCommand{"no such camera"};
    const auto selection = which == "primary" ? Osp::Media::CameraSelection::kPrimary
                                              : Osp::Media::CameraSelection::kSecondary;
    return {ActionStep{[selection, connect]() -> Error {
        auto& cameras = Osp::Media::CameraService::Current();
        const result r = connect ? cameras.Plug(selection) : cameras.Unplug(selection);
        if (Osp::Succeeded(r)) return std::nullopt;
        return "the camera is not there, or is so already";
    }}};
}

Steps PrintCommand(const Words& words) {
    static const std::map<std::string, std::string (*)()> kReports{{"screen", ScreenReport},
                                                                   {"photos", PhotosReport},
                                                                   {"registry", RegistryReport},
                                                                   {"sounds", SoundsReport}};
    const auto found = kReports.find(WordAt(words, 1));
    if (found == kReports.end()) throw BadCommand{"nothing of that name can be printed"};
    return {Print(found->second)};
}

using Reader = std::function<Steps(const Words&, const CommandContext&)>;

const std::map<std::string, Reader>& Readers() {
    static const std::map<std::string, Reader> kReaders{
        {"press", [](auto& w, auto&) { return Steps{Press(PointAt(w, 1))}; }},
        {"move", [](auto& w, auto&) { return Steps{Move(PointAt(w, 1))}; }},
        {"release", [](auto& w, auto&) { return Steps{Release(PointAt(w, 1))}; }},
        {"tap",
         [](auto& w, auto&) {
             return Steps{Press(PointAt(w, 1)), Release(PointAt(w, 1))};
         }},
        {"drag", [](auto& w, auto&) { return Drag(w); }},
        {"key", [](auto& w, auto&) { return Key(w); }},
        {"wait", [](auto& w, auto&) { return Steps{WaitStep{milliseconds(NumberAt(w, 1))}}; }},
        {"await", [](auto& w, auto&) { return Await(w); }},
        {"expect", [](auto& w, auto&) { return Expect(w); }},
        {"record-shows",
         [](auto& w, auto& c) {
             return Steps{ActionStep{[&recorder = c.recorder, folder = WordAt(w, 1)] {
                 return recorder.RecordTo(folder);
             }}};
         }},
        {"background",
         [](auto&, auto&) {
             return Steps{Posted([] { Osp::App::Lifecycle::Current().EnterBackground(); })};
         }},
        {"foreground",
         [](auto&, auto&) {
             return Steps{Posted([] { Osp::App::Lifecycle::Current().EnterForeground(); })};
         }},
        {"unplug", [](auto& w, auto&) { return Connect(w, false); }},
        {"plug", [](auto& w, auto&) { return Connect(w, true); }},
        {"screenshot",
         [](auto& w, auto&) {
             return Steps{ActionStep{[path = WordAt(w, 1)] { return SaveScreenshot(path); }}};
         }},
        {"print", [](auto& w, auto&) { return PrintCommand(w); }},
        {"quit",
         [](auto&, auto&) {
             return Steps{Posted([] { Osp::App::Lifecycle::Current().Terminate(false); })};
         }},
    };
    return kReaders;
}

}  // namespace

Steps ParseCommand(const std::string& line, const CommandContext& context) {
    std::istringstream stream(line.substr(0, line.find('#')));
    Words words;
    for (std::string word; stream >> word;) words.push_back(word);
    if (words.empty()) return {};
    try {
        const auto reader = Readers().find(words[0]);
        if (reader == Readers().end()) throw BadCommand{"no such command"};
        return reader->second(words, context);
    } catch (const BadCommand& bad) {
        return {ActionStep{[reason = bad.reason]() -> Error { return reason; }}};
    }
}

}  // namespace Host
