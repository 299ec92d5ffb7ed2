#include "effects/types/out_focus.h"

#include <cassert>

#include "effects/blur/separable_blur.h"
#include "effects/pixels/preconditions.h"

namespace Kivo::Effects {

void OutFocus(ConstPixels source, Pixels destination, const GaussianLevels& levels,
              Scratch& scratch, Rows rows) {
    assert(AreAlikeAndApart(source, destination));
    const LinePlan across(source.width, kGradedLevel, levels);
    const LinePlan down(source.height, kGradedLevel, levels);
    Scratch::Scope scope(scratch);
    float* const work = scope.Take<float>(RowWorkFloats(source.width, 3)).data();
    BlurInBands(
        down, source.StrideBytes(), rows.ClippedTo(source.height), scratch,
        [&](int y, std::uint8_t* row) { BlurRow(source.Row(y), row, 3, across, work); },
        [&](int y) { return destination.Row(y); }, [](int, int) {});
}

}  // namespace Kivo::Effects
