// Where arrows and their like lead.
#pragma once

namespace Osp::Ui {

/// How the caret can be told to go.
enum class CaretMove {
    kCharacterBefore,
    kCharacterAfter,
    kWordBefore,
    kWordAfter,
    kLineAbove,
    kLineBelow,
    kLineStart,
    kLineEnd,
    kTextStart,
    kTextEnd
};

}  // namespace Osp::Ui
