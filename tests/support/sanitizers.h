// Whether this build is instrumented, which changes what memory and time a run takes.
#pragma once

namespace Kivo::Testing {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Whose memory for every byte of the program's is several bytes more.
#if defined(__SANITIZE_THREAD__)
inline constexpr bool kIsThreadSanitized = true;
#else
inline constexpr bool kIsThreadSanitized = false;
#endif

}  // namespace Kivo::Testing
