#include "tests/develop/develop_fixture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <glib.h>
#include <sys/wait.h>

namespace Kivo::Testing {

ProgramResult RunDevelop(const std::vector<std::string>& arguments) {
    const std::string program = ProgramFolder() + "/kivo-develop";
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    char* output = nullptr;
    char* errors = nullptr;
    int status = 0;
    if (!g_spawn_sync(nullptr, words.data(), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, &output,
                      &errors, &status, nullptr)) {
        std::abort();  // nothing that follows makes sense
    }
    const ProgramResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, output, errors};
    g_free(output);
    g_free(errors);
    return result;
}

std::string ToPpm(const Picture& picture) {
    return "P6 " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " 255\n" +
           std::string(picture.bytes.begin(), picture.bytes.end());
}

Picture FromPpm(const std::string& text) {
    int width = 0;
    int height = 0;
    int end = 0;  // of the header but for one byte
    std::sscanf(text.c_str(), "P6 %d %d 255%n", &width, &height, &end);
    Picture picture(width, height);
    const std::string pixels =
        text.substr(std::min(static_cast<std::size_t>(end) + 1, text.size()));
    EXPECT_EQ(pixels.size(), picture.bytes.size()) << text.substr(0, 20);
    EXPECT_GT(end, 0);
    picture.bytes.assign(pixels.begin(), pixels.end());
    return picture;
}

}  // namespace Kivo::Testing
