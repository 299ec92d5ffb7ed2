// A folder of pictures.
#pragma once

#include <string>
#include <vector>

#include "develop/problem.h"
#include "develop/recipe.h"

namespace Kivo::Tools {

struct BatchReport {
    int developed = 0;
    int leftOut = 0;  // after an interruption or on a full disk
    bool isDiskFull = false;
    std::vector<Problem> problems;  // of pictures that could not be developed, in name order
    std::vector<Problem> warnings;  // of others, in name order
};

/// Develops every picture of a folder into files of the same name in another one, which is created
/// if need be, on all processors. `recipe` is of a type of one frame. Pictures are the files with
/// the extensions of pictures that are not hidden. Interrupted, or when the disk is full, it
/// finishes the pictures that it has begun. A problem is returned when nothing could be done at
/// all; what goes wrong with single pictures is in the report.
Problem DevelopFolder(const Recipe& recipe, const std::string& inputFolder,
                      const std::string& outputFolder, BatchReport& report);

}  // namespace Kivo::Tools
