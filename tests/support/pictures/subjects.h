// What a camera of stored pictures delivers.
#pragma once

#include <string>
#include <vector>

#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/pictures.h"
#include "tests/support/temporary_folder.h"

namespace Kivo::Testing {

/// A folder of JPEGs for a camera to deliver, and what they decode to.
struct Subjects {
    explicit Subjects(int count, int width = 1280, int height = 960) {
        for (int i = 0; i < count; ++i) {
            const Look look = i % 2 == 0 ? Look::kGradient : Look::kOutliers;
            const std::string jpeg =
                EncodeJpeg(RandomPicture(width, height, look, static_cast<unsigned>(i)));
            Osp::Testing::WriteText(folder / ("subject-" + std::to_string(i) + ".jpg"), jpeg);
            frames.push_back(DecodeJpeg(jpeg));
        }
    }
    std::string Source() const { return "photos:" + folder.Path(); }

    Osp::Testing::TemporaryFolder folder;
    std::vector<Picture> frames;
};

}  // namespace Kivo::Testing
