// A camera of colour bars for tests: a video source in the graph of PipeWire, which can be made to
// misbehave in the ways of real ones.
//
// Standard input takes a command a line: stall (no more frames) and go, vanish and return (a new
// node of the same name), size WxH (other modes in mid-stream), rate R, late MS (frames are held
// and come in bursts), short (buffers claim half of their bytes), damage, stride N (a wrong one in
// the buffers), error [-ERRNO] TEXT, ok (no more of all that) and end. Standard output says what
// happened: "ready ID", "streaming FORMAT WxH@RATE", "paused", "gone", "failed TEXT", "lost" (the
// daemon is gone; the camera comes back with the next one), and "frame N" when asked to.
#include <cstdio>
#include <glib.h>
#include <pipewire/pipewire.h>
#include <string>
#include <utility>
#include <vector>

#include "osp/base/owner.h"
#include "tests/support/virtual_camera/camera_runner.h"

namespace Osp::Testing {

namespace {

constexpr int kExitUsage = 2;

using Words = Base::Owner<gchar*, g_strfreev>;
using Word = Base::Owner<gchar, g_free>;

struct Arguments {
    gchar* name = nullptr;
    gchar* description = nullptr;
    gchar* facing = nullptr;
    gchar** modes = nullptr;
    gchar** properties = nullptr;
    gchar** commands = nullptr;
    int padding = 0;
    gboolean isVerbose = FALSE;
};

bool Parse(int argc, char** argv, Arguments& arguments) {
    const GOptionEntry entries[] = {
        {"name", 0, 0, G_OPTION_ARG_STRING, &arguments.name, "node.name", "NAME"},
        {"description", 0, 0, G_OPTION_ARG_STRING, &arguments.description, "node.description",
         "TEXT"},
        {"facing", 0, 0, G_OPTION_ARG_STRING, &arguments.facing, "api.libcamera.location",
         "front|back"},
        {"mode", 0, 0, G_OPTION_ARG_STRING_ARRAY, &arguments.modes,
         "Offer this mode; may be given again (default: I420:640x480@30)", "FORMAT:WxH@RATE"},
        {"property", 0, 0, G_OPTION_ARG_STRING_ARRAY, &arguments.properties,
         "Property of the node; may be given again", "KEY=VALUE"},
        {"do", 0, 0, G_OPTION_ARG_STRING_ARRAY, &arguments.commands,
         "Command before the start; may be given again", "COMMAND"},
        {"padding", 0, 0, G_OPTION_ARG_INT, &arguments.padding, "After each row of raw frames",
         "BYTES"},
        {"verbose", 0, 0, G_OPTION_ARG_NONE, &arguments.isVerbose, "Print every frame", nullptr},
        {nullptr, 0, 0, G_OPTION_ARG_NONE, nullptr, nullptr, nullptr}};
    const Base::Owner<GOptionContext, g_option_context_free> context(
        g_option_context_new("- a camera of colour bars"));
    g_option_context_add_main_entries(context.get(), entries, nullptr);
    GError* error = nullptr;
    if (g_option_context_parse(context.get(), &argc, &argv, &error) && argc == 1) return true;
    std::fprintf(stderr, "virtual-camera: %s\n", error ? error->message : "what is that word?");
    g_clear_error(&error);
    return false;
}

bool AddProperties(NodeOptions& options, const Arguments& arguments) {
    const std::string name = arguments.name ? arguments.name : "virtual-camera";
    options.properties = {
        {PW_KEY_NODE_NAME, name},
        {PW_KEY_NODE_DESCRIPTION, arguments.description ? arguments.description : name}};
    if (arguments.facing)
        options.properties.emplace_back("api.libcamera.location", arguments.facing);
    for (gchar** each = arguments.properties; each && *each; ++each) {
        const std::string property = *each;
        const std::size_t equals = property.find('=');
        if (equals == std::string::npos) return false;
        options.properties.emplace_back(property.substr(0, equals), property.substr(equals + 1));
    }
    return true;
}

bool AddModes(NodeOptions& options, const Arguments& arguments) {
    for (gchar** each = arguments.modes; each && *each; ++each) {
        const auto mode = ParseMode(*each);
        if (!mode) return false;
        options.modes.push_back(*mode);
    }
    if (options.modes.empty()) options.modes.push_back({PixelFormat::kI420, 640, 480, 30});
    return true;
}

int Fail(const char* problem) {
    std::fprintf(stderr, "virtual-camera: %s\n", problem);
    return kExitUsage;
}

int Main(int argc, char** argv) {
    Arguments arguments;
    const bool isUnderstood = Parse(argc, argv, arguments);
    const Word texts[] = {Word(arguments.name), Word(arguments.description),
                          Word(arguments.facing)};
    const Words lists[] = {Words(arguments.modes), Words(arguments.properties),
                           Words(arguments.commands)};
    if (!isUnderstood) return kExitUsage;
    NodeOptions options;
    options.paddingBytes = arguments.padding;
    options.isVerbose = arguments.isVerbose;
    if (arguments.padding < 0 || arguments.padding % 2 != 0) return Fail("padding is even");
    if (!AddProperties(options, arguments)) return Fail("a property is KEY=VALUE");
    if (!AddModes(options, arguments)) return Fail("a mode is like I420:640x480@30, sizes even");
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    pw_init(nullptr, nullptr);
    CameraRunner runner(std::move(options));
    for (gchar** each = arguments.commands; each && *each; ++each) {
        if (!runner.Do(*each)) return Fail("a command is not understood");
    }
    return runner.Run();
}

}  // namespace

}  // namespace Osp::Testing

int main(int argc, char** argv) {
    return Osp::Testing::Main(argc, argv);
}
