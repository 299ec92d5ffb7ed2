#include <osp/base/utility/math.h>

#include "osp/base/randomness.h"

namespace Osp::Base::Utility {

int Math::Rand() {
    return Randomness::Current().Number();
}

}  // namespace Osp::Base::Utility
