#include "tools/develop_program.h"

#include <cstdlib>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sstream>

namespace Kivo::Testing {

ProgramResult RunDevelop(const std::vector<std::string>& arguments) {
    const std::string program = ProgramFolder() + "/kivo-develop";
    std::vector<const char*> words{program.c_str()};
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    words.push_back(nullptr);
    constexpr auto kPipes = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                          G_SUBPROCESS_FLAGS_STDERR_PIPE);
    GError* error = nullptr;
    GSubprocess* const process = g_subprocess_newv(words.data(), kPipes, &error);
    if (process == nullptr) {
        ADD_FAILURE() << error->message;
        std::abort();  // nothing that follows makes sense
    }
    char* output = nullptr;
    char* errors = nullptr;
    g_subprocess_communicate_utf8(process, nullptr, nullptr, &output, &errors, nullptr);
    ProgramResult result;
    result.output = output == nullptr ? "" : output;
    result.errors = errors == nullptr ? "" : errors;
    if (g_subprocess_get_if_exited(process))
        result.exitCode = g_subprocess_get_exit_status(process);
    g_free(output);
    g_free(errors);
    g_object_unref(process);
    return result;
}

std::string ToPpm(const Picture& picture) {
    return "P6 " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " 255\n" +
           std::string(picture.bytes.begin(), picture.bytes.end());
}

Picture FromPpm(const std::string& text) {
    std::istringstream stream(text);
    std::string magic;
    int width = 0;
    int height = 0;
    int highest = 0;
    stream >> magic >> width >> height >> highest;
    stream.get();
    if (magic != "P6" || highest != 255 || width < 1 || height < 1) {
        ADD_FAILURE() << "not a pixmap: " << text.substr(0, 20);
        return Picture(1, 1);
    }
    Picture picture(width, height);
    stream.read(reinterpret_cast<char*>(picture.bytes.data()),
                static_cast<std::streamsize>(picture.bytes.size()));
    EXPECT_EQ(stream.gcount(), static_cast<std::streamsize>(picture.bytes.size()));
    EXPECT_EQ(stream.peek(), std::char_traits<char>::eof());
    return picture;
}

}  // namespace Kivo::Testing
