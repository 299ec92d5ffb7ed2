// Conversion of whole numbers from and to text.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Base {

class Integer {
  public:
    /// Reads decimal digits with an optional leading minus and nothing else. kInvalidFormat,
    /// leaving `value` alone, for anything else and for what does not fit an int.
    static result Parse(const String& text, int& value);
    /// In decimal digits, with a leading minus where it is negative.
    static String ToString(int value);
};

}  // namespace Osp::Base
