#include "host/script/script_commands.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include <osp/base/integer.h>

#include "host/script/report.h"
#include "host/script/show_recorder.h"
#include "osp/app/lifecycle.h"
#include "osp/base/event_loop.h"
#include "osp/media/camera/camera_service.h"
#include "osp/ui/input.h"

namespace Host {

using Osp::Base::EventClass;
using Osp::Base::EventLoop;
using Osp::Graphics::Point;
using Osp::Ui::Input;
using std::chrono::milliseconds;

namespace {

using Words = std::vector<std::string>;
using Error = std::optional<std::string>;

constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();
constexpr int kAwaitMs = 10000;
constexpr int kDragSteps = 10;
constexpr int kMostDragSteps = 10000;
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

int NotNegative(const std::string& word) {
    const int value = Number(word);
    if (value < 0) throw BadCommand{"'" + word + "' is negative"};
    return value;
}

/// `fewest` to `most` words after the command's name.
void CheckCount(const Words& words, std::size_t fewest, std::size_t most) {
    if (words.size() - 1 < fewest) throw BadCommand{"a word is missing"};
    if (words.size() - 1 > most) throw BadCommand{"'" + words[most + 1] + "' is too much"};
}

Point PointAt(const Words& words, std::size_t index) {
    return {Number(words[index]), Number(words[index + 1])};
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
    const int count = words.size() > 5 ? Number(words[5]) : kDragSteps;
    if (count < 1 || count > kMostDragSteps) throw BadCommand{"a drag has 1 to 10000 steps"};
    const auto at = [count](long long a, long long b, int i) {
        return static_cast<int>(a + (b - a) * i / count);
    };
    Steps steps{Press(from)};
    for (int i = 1; i <= count; ++i) {
        steps.push_back(WaitStep{milliseconds(kDragStepMs)});
        steps.push_back(Move({at(from.x, to.x, i), at(from.y, to.y, i)}));
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
    const auto found = kKeys.find(words[1]);
    if (found == kKeys.end()) throw BadCommand{"no such key"};
    const Osp::Ui::KeyCode code = found->second;
    return {Posted([code] { Input::Current().KeyPress(code); }),
            Posted([code] { Input::Current().KeyRelease(code); })};
}

struct Condition {
    std::function<bool()> isSo;
    std::function<std::string()> failure;
};

Condition ReadPhotos(const std::string& word) {
    const auto count = static_cast<std::size_t>(NotNegative(word));
    return {[count] { return PhotoPaths().size() == count; },
            [] { return "the number is " + std::to_string(PhotoPaths().size()); }};
}

/// "form NAME", "text TEXT", "photos N" or "preview", after the command's name.
Condition ReadCondition(const Words& words) {
    const std::string& kind = words[1];
    if (kind != "form" && kind != "text" && kind != "photos" && kind != "preview") {
        throw BadCommand{"no such condition"};
    }
    CheckCount(words, kind == "preview" ? 1 : 2,
               kind == "preview" ? 1
               : kind == "text"  ? kMany
                                 : 2);
    if (kind == "preview") return {HasPreview, [] { return "there is no uncovered preview"; }};
    std::string argument = words[2];
    for (std::size_t i = 3; i < words.size(); ++i) argument += " " + words[i];
    if (kind == "photos") return ReadPhotos(argument);
    if (kind == "form") {
        return {[argument] { return CurrentFormName() == argument; },
                [] { return "the form is " + CurrentFormName(); }};
    }
    return {[argument] { return IsTextVisible(argument); },
            [] { return "it is not on the screen"; }};
}

/// The milliseconds that may follow a condition are taken off `words`.
int TakeLimit(Words& words) {
    const std::size_t condition = words[1] == "preview" ? 2 : 3;
    int limitMs = 0;
    if (words.size() <= condition ||
        Osp::Failed(Osp::Base::Integer::Parse(Osp::Base::String(words.back()), limitMs))) {
        return kAwaitMs;
    }
    limitMs = NotNegative(words.back());
    words.pop_back();
    return limitMs;
}

Steps Await(Words words) {
    const int limitMs = TakeLimit(words);
    Condition condition = ReadCondition(words);
    return {AwaitStep{condition.isSo, milliseconds(limitMs), condition.failure}};
}

Steps Expect(const Words& words) {
    return {ActionStep{[condition = ReadCondition(words)]() -> Error {
        if (condition.isSo()) return std::nullopt;
        return condition.failure();
    }}};
}

Steps Connect(const Words& words, bool connect) {
    const std::string& which = words[1];
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
    const auto found = kReports.find(words[1]);
    if (found == kReports.end()) throw BadCommand{"nothing of that name can be printed"};
    return {Print(found->second)};
}

struct Command {
    std::size_t fewest;  // words after its name
    std::size_t most;
    std::function<Steps(const Words&, const CommandContext&)> read;
};

const std::map<std::string, Command>& Commands() {
    static const std::map<std::string, Command> kCommands{
        {"press", {2, 2, [](auto& w, auto&) { return Steps{Press(PointAt(w, 1))}; }}},
        {"move", {2, 2, [](auto& w, auto&) { return Steps{Move(PointAt(w, 1))}; }}},
        {"release", {2, 2, [](auto& w, auto&) { return Steps{Release(PointAt(w, 1))}; }}},
        {"tap",
         {2, 2,
          [](auto& w, auto&) {
              return Steps{Press(PointAt(w, 1)), Release(PointAt(w, 1))};
          }}},
        {"drag", {4, 5, [](auto& w, auto&) { return Drag(w); }}},
        {"key", {1, 1, [](auto& w, auto&) { return Key(w); }}},
        {"wait",
         {1, 1, [](auto& w, auto&) { return Steps{WaitStep{milliseconds(NotNegative(w[1]))}}; }}},
        {"await", {1, kMany, [](auto& w, auto&) { return Await(w); }}},
        {"expect", {1, kMany, [](auto& w, auto&) { return Expect(w); }}},
        {"record-shows",
         {1, 1,
          [](auto& w, auto& c) {
              return Steps{ActionStep{
                  [&recorder = c.recorder, folder = w[1]] { return recorder.RecordTo(folder); }}};
          }}},
        {"background",
         {0, 0,
          [](auto&, auto&) {
              return Steps{Posted([] { Osp::App::Lifecycle::Current().EnterBackground(); })};
          }}},
        {"foreground",
         {0, 0,
          [](auto&, auto&) {
              return Steps{Posted([] { Osp::App::Lifecycle::Current().EnterForeground(); })};
          }}},
        {"unplug", {1, 1, [](auto& w, auto&) { return Connect(w, false); }}},
        {"plug", {1, 1, [](auto& w, auto&) { return Connect(w, true); }}},
        {"screenshot",
         {1, 1,
          [](auto& w, auto&) {
              return Steps{ActionStep{[path = w[1]] { return SaveScreenshot(path); }}};
          }}},
        {"print", {1, 1, [](auto& w, auto&) { return PrintCommand(w); }}},
        {"quit",
         {0, 0,
          [](auto&, auto&) {
              return Steps{Posted([] { Osp::App::Lifecycle::Current().Terminate(false); })};
          }}},
    };
    return kCommands;
}

Steps Read(const Words& words, const CommandContext& context) {
    const auto command = Commands().find(words[0]);
    if (command == Commands().end()) throw BadCommand{"no such command"};
    CheckCount(words, command->second.fewest, command->second.most);
    return command->second.read(words, context);
}

}  // namespace

Steps ParseCommand(const std::string& line, const CommandContext& context) {
    try {
        if (line.size() > kLongestLineBytes) throw BadCommand{"the line is too long"};
        std::istringstream stream(line.substr(0, line.find('#')));
        Words words;
        for (std::string word; stream >> word;) words.push_back(word);
        return words.empty() ? Steps{} : Read(words, context);
    } catch (const BadCommand& bad) {
        return {ActionStep{[reason = bad.reason]() -> Error { return reason; }}};
    }
}

}  // namespace Host
