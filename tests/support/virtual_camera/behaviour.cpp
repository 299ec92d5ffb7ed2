#include "tests/support/virtual_camera/behaviour.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace Osp::Testing {

namespace {

struct Word {
    std::string_view name;
    bool wantsNumber;
    void (*change)(Behaviour&, int);
};

constexpr Word kWords[] = {
    {"stall", false, [](Behaviour& behaviour, int) { behaviour.isStalled = true; }},
    {"go", false, [](Behaviour& behaviour, int) { behaviour.isStalled = false; }},
    {"short", false, [](Behaviour& behaviour, int) { behaviour.isShort = true; }},
    {"damage", false, [](Behaviour& behaviour, int) { behaviour.isDamaged = true; }},
    {"stride", true, [](Behaviour& behaviour, int bytes) { behaviour.strideBytes = bytes; }},
    {"late", true, [](Behaviour& behaviour, int ms) { behaviour.lateMs = ms; }},
    {"rate", true, [](Behaviour& behaviour, int rate) { behaviour.rate = rate; }},
    {"ok", false, [](Behaviour& behaviour, int) { behaviour = {}; }},
};

}  // namespace

bool Change(Behaviour& behaviour, const std::string& word, const std::string& argument) {
    const auto* const found = std::ranges::find(kWords, word, &Word::name);
    if (found == std::end(kWords)) return false;
    const int number = std::atoi(argument.c_str());
    if (found->wantsNumber ? number < 1 : !argument.empty()) return false;
    found->change(behaviour, number);
    return true;
}

}  // namespace Osp::Testing
