// How the camera misbehaves.
#pragma once

#include <string>

namespace Osp::Testing {

struct Behaviour {
    bool isStalled = false;
    bool isShort = false;    // buffers claim half of their bytes
    bool isDamaged = false;  // JPEGs are overwritten, raw frames say that they are corrupted
    int strideBytes = 0;     // that buffers claim; 0 for the right one
    int lateMs = 0;          // frames are held that long and come in bursts
    int rate = 0;            // frames a second; 0 for the mode's
};

/// `stall`, `go`, `short`, `damage`, `stride N`, `late MS`, `rate R` or `ok`, which ends them all.
/// False, and nothing happens, when `word` is none of them or needs a number that is not there.
bool Change(Behaviour& behaviour, const std::string& word, const std::string& argument);

}  // namespace Osp::Testing
