// Whether this build is instrumented, which changes what memory and time a run takes.
#pragma once

namespace Kivo::Testing {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

}  // namespace Kivo::Testing
