#include "tests/develop/develop_program.h"

#include <cstdlib>
#include <glib.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/wait.h>

namespace Kivo::Testing {

ProgramResult RunDevelop(const std::vector<std::string>& arguments) {
    std::vector<std::string> words{ProgramFolder() + "/kivo-develop"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    char* output = nullptr;
    char* errors = nullptr;
    int status = 0;
    GError* error = nullptr;
    if (!g_spawn_sync(nullptr, pointers.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, &output,
                      &errors, &status, &error)) {
        ADD_FAILURE() << error->message;
        std::abort();  // nothing that follows makes sense
    }
    ProgramResult result;
    result.output = output;
    result.errors = errors;
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    g_free(output);
    g_free(errors);
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
