#pragma once

#include <QtGlobal>

namespace orvel::test {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isSanitized = true; // what was freed is kept for a while
#else
inline constexpr bool isSanitized = false;
#endif

// What this process holds now, as the kernel counts it. Memory: resident bytes that no file backs.
qint64 anonymousMemory();

} // namespace orvel::test
