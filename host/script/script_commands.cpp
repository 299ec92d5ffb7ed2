#include "host/script/script_commands.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include <osp/base/integer.h>

#include "host/script/page_pictures.h"
#include "host/script/report.h"
#include "host/script/show_recorder.h"
#include "osp/app/lifecycle.h"
#include "osp/base/event_loop.h"
#include "osp/media/camera/camera_service.h"
#include "osp/ui/input.h"
#include "osp/ui/text/text_input.h"

namespace Host {

using Osp::App::Lifecycle;
using Osp::Base::EventClass;
using Osp::Base::EventLoop;
using Osp::Graphics::Point;
using Osp::Ui::Input;
using std::chrono::milliseconds;

namespace {

using Words = std::vector<std::string>;

constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();
constexpr int kAwaitMs = 10000;
constexpr int kDragSteps = 10;
constexpr int kMostDragSteps = 10000;
constexpr int kDragStepMs = 10;

/// `fewest` to `most` words after the command's name.
Outcome<> CheckCount(const Words& words, std::size_t fewest, std::size_t most) {
    if (words.size() - 1 < fewest) return Failure{"a word is missing"};
    if (words.size() - 1 > most) return Failure{"'" + words[most + 1] + "' is too much"};
    return kDone;
}

Outcome<int> ReadNumber(const std::string& word) {
    int value = 0;
    if (Osp::Succeeded(Osp::Base::Integer::Parse(Osp::Base::String(word), value))) return value;
    return Failure{"'" + word + "' is not a number"};
}

Outcome<int> ReadNotNegative(const std::string& word) {
    Outcome<int> value = ReadNumber(word);
    if (value && *value < 0) return Failure{"'" + word + "' is negative"};
    return value;
}

/// The words after the command's name: n is a number, t one that is not negative, w anything.
Outcome<> CheckKinds(const Words& words, std::string_view kinds) {
    for (std::size_t i = 1; i < words.size() && i <= kinds.size(); ++i) {
        if (kinds[i - 1] == 'w') continue;
        const auto value = kinds[i - 1] == 't' ? ReadNotNegative(words[i]) : ReadNumber(words[i]);
        if (!value) return value.Why();
    }
    return kDone;
}

/// Of a word that has been found to be one.
int NumberAt(const Words& words, std::size_t index) {
    return *ReadNumber(words[index]);
}

Point PointAt(const Words& words, std::size_t index) {
    return {NumberAt(words, index), NumberAt(words, index + 1)};
}

// The application may wait for a box inside what a command causes, so a command only posts.
Step Posted(std::function<void()> task) {
    return ActionStep{[task = std::move(task)] {
        EventLoop::Current().Post(EventClass::kSystem, task);
        return kDone;
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

Step Print(std::function<std::string()> report) {
    return ActionStep{[report = std::move(report)] {
        std::printf("%s\n", report().c_str());
        std::fflush(stdout);
        return kDone;
    }};
}

Outcome<Steps> Drag(const Words& words) {
    const Point from = PointAt(words, 1);
    const Point to = PointAt(words, 3);
    const int count = words.size() > 5 ? NumberAt(words, 5) : kDragSteps;
    if (count < 1 || count > kMostDragSteps) return Failure{"a drag has 1 to 10000 steps"};
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

Outcome<Steps> Key(const Words& words) {
    if (words[1] == "tab") return Steps{Posted([] { Input::Current().FocusNext(false); })};
    if (words[1] == "enter") {
        return Steps{Posted([] { Input::Current().Confirm(); }),
                     Posted([] { Input::Current().KeyRelease(Osp::Ui::KeyCode::kCamera); })};
    }
    static const std::map<std::string, Osp::Ui::KeyCode> kKeys{
        {"camera", Osp::Ui::KeyCode::kCamera},
        {"soft0", Osp::Ui::KeyCode::kSoftKey0},
        {"soft1", Osp::Ui::KeyCode::kSoftKey1},
        {"back", Osp::Ui::KeyCode::kBack},
        {"left", Osp::Ui::KeyCode::kLeft},
        {"right", Osp::Ui::KeyCode::kRight}};
    const auto found = kKeys.find(words[1]);
    if (found == kKeys.end()) return Failure{"no such key"};
    const Osp::Ui::KeyCode code = found->second;
    return Steps{Posted([code] { Input::Current().KeyPress(code); }),
                 Posted([code] { Input::Current().KeyRelease(code); })};
}

/// The words as they are written, with one space between two.
std::string Joined(const Words& words, std::size_t first) {
    std::string text = words[first];
    for (std::size_t i = first + 1; i < words.size(); ++i) text += " " + words[i];
    return text;
}

Steps Text(const Words& words) {
    return {ActionStep{[text = Osp::Base::String(Joined(words, 1))]() -> Outcome<> {
        auto& input = Osp::Ui::TextInput::Current();
        if (input.GetTarget() == nullptr && input.GetOutsideTarget() == nullptr) {
            return Failure{"no edit area has the focus"};
        }
        input.Insert(text);
        return kDone;
    }}};
}

struct Condition {
    std::function<bool()> isSo;
    std::function<std::string()> failure;
};

Outcome<Condition> ReadPhotos(const std::string& word) {
    Outcome<int> number = ReadNotNegative(word);
    if (!number) return number.Why();
    const auto count = static_cast<std::size_t>(*number);
    return Condition{[count] { return PhotoPaths().size() == count; },
                     [] { return "the number is " + std::to_string(PhotoPaths().size()); }};
}

/// "form NAME", "text TEXT", "photos N" or "preview", after the command's name.
Outcome<Condition> ReadCondition(const Words& words) {
    const std::string& kind = words[1];
    if (kind != "form" && kind != "text" && kind != "photos" && kind != "preview") {
        return Failure{"no such condition"};
    }
    const std::size_t fewest = kind == "preview" ? 1 : 2;
    const Outcome<> count = CheckCount(words, fewest, kind == "text" ? kMany : fewest);
    if (!count) return count.Why();
    if (kind == "preview") {
        return Condition{HasPreview, [] { return "there is no uncovered preview"; }};
    }
    const std::string argument = Joined(words, 2);
    if (kind == "photos") return ReadPhotos(argument);
    if (kind == "form") {
        return Condition{[argument] { return CurrentFormName() == argument; },
                         [] { return "the form is " + CurrentFormName(); }};
    }
    return Condition{[argument] { return IsTextVisible(argument); },
                     [] { return "it is not on the screen"; }};
}

/// The milliseconds that may follow a condition are taken off `words`.
Outcome<int> TakeLimit(Words& words) {
    const std::size_t condition = words[1] == "preview" ? 2 : 3;
    if (words.size() <= condition || !ReadNumber(words.back())) return kAwaitMs;
    const std::string limit = words.back();
    words.pop_back();
    return ReadNotNegative(limit);
}

Outcome<Steps> Await(Words words) {
    Outcome<int> limitMs = TakeLimit(words);
    if (!limitMs) return limitMs.Why();
    Outcome<Condition> condition = ReadCondition(words);
    if (!condition) return condition.Why();
    return Steps{AwaitStep{(*condition).isSo, milliseconds(*limitMs), (*condition).failure}};
}

Outcome<Steps> Expect(const Words& words) {
    Outcome<Condition> condition = ReadCondition(words);
    if (!condition) return condition.Why();
    return Steps{ActionStep{[condition = *condition]() -> Outcome<> {
        if (condition.isSo()) return kDone;
        return Failure{condition.failure()};
    }}};
}

Outcome<Steps> Connect(const Words& words, bool connect) {
    const std::string& which = words[1];
    if (which != "primary" && which != "secondary") return Failure{"no such camera"};
    const auto selection = which == "primary" ? Osp::Media::CameraSelection::kPrimary
                                              : Osp::Media::CameraSelection::kSecondary;
    return Steps{ActionStep{[selection, connect]() -> Outcome<> {
        auto& cameras = Osp::Media::CameraService::Current();
        const result r = connect ? cameras.Plug(selection) : cameras.Unplug(selection);
        if (Osp::Succeeded(r)) return kDone;
        return Failure{"the camera is not there, or is so already"};
    }}};
}

Outcome<Steps> PrintCommand(const Words& words, const CommandContext& context) {
    if (words[1] == "cameras") {
        return Steps{Print([&modules = context.modules] { return CamerasReport(modules); })};
    }
    static const std::map<std::string, std::string (*)()> kReports{{"screen", ScreenReport},
                                                                   {"photos", PhotosReport},
                                                                   {"registry", RegistryReport},
                                                                   {"sounds", SoundsReport}};
    const auto found = kReports.find(words[1]);
    if (found == kReports.end()) return Failure{"nothing of that name can be printed"};
    return Steps{Print(found->second)};
}

struct Command {
    std::size_t fewest;  // words after its name
    std::size_t most;
    std::string_view kinds;  // of the words, as far as they are numbers
    /// Of words whose number and kinds are right.
    std::function<Outcome<Steps>(const Words&, const CommandContext&)> read;
};

Steps Tap(const Words& words) {
    return {Press(PointAt(words, 1)), Release(PointAt(words, 1))};
}

Steps Wait(const Words& words) {
    return {WaitStep{milliseconds(NumberAt(words, 1))}};
}

Steps RecordShows(const Words& words, const CommandContext& context) {
    return {ActionStep{
        [&recorder = context.recorder, folder = words[1]] { return recorder.RecordTo(folder); }}};
}

Steps Screenshot(const Words& words) {
    const auto plain = [](void (*task)()) {
        return ActionStep{[task] {
            task();
            return kDone;
        }};
    };
    // The loop waits for the pages before it asks for the next step.
    return {plain(TakePagePictures), ActionStep{[path = words[1]] { return SaveScreenshot(path); }},
            plain(DropPagePictures)};
}

Steps Live(void (*task)(Lifecycle&)) {
    return {Posted([task] { task(Lifecycle::Current()); })};
}

const std::map<std::string_view, Command>& Commands() {
    static const std::map<std::string_view, Command> kCommands{
        {"press", {2, 2, "nn", [](auto& w, auto&) { return Steps{Press(PointAt(w, 1))}; }}},
        {"move", {2, 2, "nn", [](auto& w, auto&) { return Steps{Move(PointAt(w, 1))}; }}},
        {"release", {2, 2, "nn", [](auto& w, auto&) { return Steps{Release(PointAt(w, 1))}; }}},
        {"tap", {2, 2, "nn", [](auto& w, auto&) { return Tap(w); }}},
        {"drag", {4, 5, "nnnnn", [](auto& w, auto&) { return Drag(w); }}},
        {"key", {1, 1, "w", [](auto& w, auto&) { return Key(w); }}},
        {"text", {1, kMany, "", [](auto& w, auto&) { return Text(w); }}},
        {"wait", {1, 1, "t", [](auto& w, auto&) { return Wait(w); }}},
        {"await", {1, kMany, "w", [](auto& w, auto&) { return Await(w); }}},
        {"expect", {1, kMany, "w", [](auto& w, auto&) { return Expect(w); }}},
        {"record-shows", {1, 1, "w", RecordShows}},
        {"background",
         {0, 0, "", [](auto&, auto&) { return Live([](auto& l) { l.EnterBackground(); }); }}},
        {"foreground",
         {0, 0, "", [](auto&, auto&) { return Live([](auto& l) { l.EnterForeground(); }); }}},
        {"unplug", {1, 1, "w", [](auto& w, auto&) { return Connect(w, false); }}},
        {"plug", {1, 1, "w", [](auto& w, auto&) { return Connect(w, true); }}},
        {"screenshot", {1, 1, "w", [](auto& w, auto&) { return Screenshot(w); }}},
        {"print", {1, 1, "w", PrintCommand}},
        {"quit",
         {0, 0, "", [](auto&, auto&) { return Live([](auto& l) { l.Terminate(false); }); }}},
    };
    return kCommands;
}

Outcome<Steps> Read(const std::string& line, const CommandContext& context) {
    if (line.size() > kLongestLineBytes) return Failure{"the line is too long"};
    std::istringstream stream(line.substr(0, line.find('#')));
    Words words;
    for (std::string word; stream >> word;) words.push_back(word);
    if (words.empty()) return Steps{};
    const auto found = Commands().find(words[0]);
    if (found == Commands().end()) return Failure{"no such command"};
    const Command& command = found->second;
    const Outcome<> count = CheckCount(words, command.fewest, command.most);
    if (!count) return count.Why();
    const Outcome<> kinds = CheckKinds(words, command.kinds);
    if (!kinds) return kinds.Why();
    return command.read(words, context);
}

}  // namespace

Steps ParseCommand(const std::string& line, const CommandContext& context) {
    Outcome<Steps> steps = Read(line, context);
    if (steps) return *steps;
    return {ActionStep{[failure = steps.Why()]() -> Outcome<> { return failure; }}};
}

}  // namespace Host
