#include "develop/options.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <glib.h>
#include <span>
#include <string_view>

#include "cmake/product.h"
#include "develop/developer.h"
#include "develop/pictures/picture_files.h"
#include "effects/composition.h"
#include "osp/base/owner.h"

namespace Kivo::Tools {

namespace {

constexpr int kUsageError = 2;

constexpr const char* kUsage =
    "IN... -o OUT\n"
    "  kivo-develop [OPTION...] --batch DIR -o DIR\n"
    "  kivo-develop [OPTION...] --sheet IN... -o OUT";

constexpr const char* kSummary =
    "Develops pictures as the KIVO camera does.\n"
    "\n"
    "Types: KIVO, DSLR and TILT take one picture, MIX two, ACTION and QUAD four.\n"
    "Effects: Normal, Fisheye, Concave, B&W (or BW), Beach, Fall, Sepia, Negative, Edge,\n"
    "Mirror.\n"
    "Both also by number, from 0. Pictures are JPEG (.jpg, .jpeg), PNG and PPM files,\n"
    "or - for standard input and output, which takes the format of the (first) input.";

constexpr const char* kExamples =
    "Examples:\n"
    "  kivo-develop --type TILT --effect Sepia street.jpg -o street-tilt.jpg\n"
    "  kivo-develop --type MIX --hdr first.png second.png -o both.png\n"
    "  kivo-develop --type QUAD --secondary 1.ppm 2.ppm 3.ppm 4.ppm -o portrait.jpg\n"
    "  kivo-develop --type DSLR --batch holiday -o holiday-dslr\n"
    "  kivo-develop --sheet boat.jpg -o sheet.png\n"
    "  kivo-develop --hdr - -o - < street.jpg > street-hdr.jpg\n"
    "\n"
    "Exit status: 0 when all went well, 1 when something could not be developed, 2 for a\n"
    "command line that makes no sense.";

// What GLib writes its results to.
struct Raw {
    gboolean hdr = FALSE;
    gboolean secondary = FALSE;
    gboolean sheet = FALSE;
    gboolean version = FALSE;
    gchar* type = nullptr;
    gchar* effect = nullptr;
    gchar* batch = nullptr;
    gchar* output = nullptr;
    gchar** inputs = nullptr;

    Raw() = default;
    ~Raw() {
        for (gchar* text : {type, effect, batch, output}) g_free(text);
        g_strfreev(inputs);
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
};

std::string TextOf(const gchar* text) {
    return text == nullptr ? std::string() : text;
}

/// The value with this number or, in capitals or not, this name.
template <class Enum>
Problem Find(std::span<const std::string_view> names, const char* what, const char* text,
             Enum& value) {
    std::size_t number = names.size();
    const char* const textEnd = text + std::strlen(text);
    const auto [end, error] = std::from_chars(text, textEnd, number);
    if (error != std::errc{} || end != textEnd) {
        const auto named = std::ranges::find_if(names, [text](std::string_view name) {
            return g_ascii_strcasecmp(name.data(), text) == 0;  // names are literals
        });
        number = static_cast<std::size_t>(named - names.begin());
    }
    if (number >= names.size()) return std::string("there is no ") + what + " '" + text + "'";
    value = static_cast<Enum>(number);
    return {};
}

/// Shells want the ampersand quoted, so there is a name without it.
const char* WithAmpersand(const char* effect) {
    return g_ascii_strcasecmp(effect, "BW") == 0 ? "B&W" : effect;
}

/// GLib takes "--hdr=no" for "--hdr".
Problem CheckSwitches(std::span<const GOptionEntry> entries, std::span<char*> arguments) {
    for (const std::string_view argument : arguments) {
        if (argument == "--") break;
        for (const GOptionEntry& entry : entries) {
            if (entry.long_name == nullptr || entry.arg != G_OPTION_ARG_NONE) continue;
            const std::string option = std::string("--") + entry.long_name;
            if (argument.starts_with(option + "=")) return option + " takes no value";
        }
    }
    return {};
}

Problem CheckPhotograph(const Options& options) {
    const auto needed = static_cast<std::size_t>(Effects::FramesPerPhotograph(options.recipe.type));
    if (options.inputs.size() == needed) return {};
    return std::string(NameOf(options.recipe.type)) + " takes " + std::to_string(needed) +
           (needed == 1 ? " picture, " : " pictures, ") + std::to_string(options.inputs.size()) +
           (options.inputs.size() == 1 ? " is given" : " are given");
}

Problem CheckBatch(const Options& options, bool hasInputs) {
    if (hasInputs) return "--batch takes a folder and no pictures";
    if (Effects::FramesPerPhotograph(options.recipe.type) == 1) return {};
    return "--batch is for types of one picture, and " + std::string(NameOf(options.recipe.type)) +
           " takes several";
}

Problem CheckSheet(const Options& options, const Raw& raw) {
    if (raw.type != nullptr || raw.effect != nullptr) {
        return "--sheet shows every type and effect and takes neither";
    }
    if (options.inputs.empty() || options.inputs.size() > Developer::kMostFrames) {
        return "--sheet takes one picture, or up to four for the types that take several";
    }
    return {};
}

Problem CheckStreams(const Options& options) {
    const auto isStream = [](const std::string& path) { return path == kStandardStream; };
    if (std::ranges::count_if(options.inputs, isStream) > 1) {
        return "standard input holds one picture";
    }
    if (options.mode == Mode::kBatch &&
        (isStream(options.output) || std::ranges::any_of(options.inputs, isStream))) {
        return "--batch works on folders, not on standard input and output";
    }
    return {};
}

Problem Interpret(const Raw& raw, Options& options) {
    options.recipe.hdr = raw.hdr;
    options.recipe.isFront = raw.secondary;
    options.output = TextOf(raw.output);
    for (gchar** input = raw.inputs; input != nullptr && *input != nullptr; ++input) {
        options.inputs.emplace_back(*input);
    }
    Problem problem;
    if (raw.type != nullptr)
        problem = Find(kCameraTypeNames, "type", raw.type, options.recipe.type);
    if (raw.effect != nullptr && problem.empty()) {
        problem =
            Find(kPhotoEffectNames, "effect", WithAmpersand(raw.effect), options.recipe.effect);
    }
    if (!problem.empty()) return problem;
    if (options.output.empty()) return "there is no output; name it after -o";
    if (std::ranges::find(options.inputs, "") != options.inputs.end()) {
        return "the name of an input is empty";
    }
    if (raw.batch != nullptr && raw.sheet) return "--batch and --sheet do not go together";
    if (TextOf(raw.batch).empty() && raw.batch != nullptr) return "the name of the folder is empty";
    if (raw.batch != nullptr) {
        options.mode = Mode::kBatch;
        problem = CheckBatch(options, !options.inputs.empty());
        options.inputs = {raw.batch};
    } else {
        options.mode = raw.sheet ? Mode::kSheet : Mode::kPhotograph;
        problem = raw.sheet ? CheckSheet(options, raw) : CheckPhotograph(options);
    }
    return problem.empty() ? CheckStreams(options) : problem;
}

Parsed Fail(const std::string& problem) {
    std::fprintf(stderr, "kivo-develop: %s (see kivo-develop --help)\n", problem.c_str());
    return {{}, kUsageError};
}

}  // namespace

Parsed ParseCommandLine(int argc, char** argv) {
    Raw raw;
    const GOptionEntry entries[] = {
        {"type", 't', 0, G_OPTION_ARG_STRING, &raw.type, "Camera type (default KIVO)", "TYPE"},
        {"effect", 'e', 0, G_OPTION_ARG_STRING, &raw.effect, "Photo effect (default Normal)",
         "EFFECT"},
        {"hdr", 0, 0, G_OPTION_ARG_NONE, &raw.hdr, "Make the HDR version", nullptr},
        {"secondary", 0, 0, G_OPTION_ARG_NONE, &raw.secondary,
         "Frames of the front camera, as it delivers them", nullptr},
        {"output", 'o', 0, G_OPTION_ARG_FILENAME, &raw.output,
         "File, whose extension tells the format, or folder", "OUT"},
        {"batch", 0, 0, G_OPTION_ARG_FILENAME, &raw.batch,
         "Develop every picture of DIR into folder OUT", "DIR"},
        {"sheet", 0, 0, G_OPTION_ARG_NONE, &raw.sheet, "Contact sheet of all types and effects",
         nullptr},
        {"version", 0, 0, G_OPTION_ARG_NONE, &raw.version, "Print the version and end", nullptr},
        {G_OPTION_REMAINING, 0, 0, G_OPTION_ARG_FILENAME_ARRAY, &raw.inputs, nullptr, nullptr},
        {nullptr, 0, 0, G_OPTION_ARG_NONE, nullptr, nullptr, nullptr}};
    const Osp::Base::Owner<GOptionContext, g_option_context_free> context(
        g_option_context_new(kUsage));
    g_option_context_set_summary(context.get(), kSummary);
    g_option_context_set_description(context.get(), kExamples);
    g_option_context_add_main_entries(context.get(), entries, nullptr);
    const Problem misused = CheckSwitches(entries, {argv, static_cast<std::size_t>(argc)});
    if (!misused.empty()) return Fail(misused);
    GError* error = nullptr;
    if (!g_option_context_parse(context.get(), &argc, &argv, &error)) {
        const Osp::Base::Owner<GError, g_error_free> owned(error);
        return Fail(error->message);
    }
    if (raw.version) {
        std::printf("kivo-develop %s\n", kVersion);
        return {{}, 0};
    }
    Parsed parsed;
    const Problem problem = Interpret(raw, parsed.options);
    return problem.empty() ? parsed : Fail(problem);
}

}  // namespace Kivo::Tools
