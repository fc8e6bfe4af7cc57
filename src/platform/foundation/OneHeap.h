#pragma once

namespace orvel {

// Keeps all threads' memory in one heap (glibc; does nothing elsewhere). Each station played has threads of
// its own, and by default each of those a heap of its own, in which what was freed stays scattered. Call
// first in main, before there are threads.
void keepOneHeap();

} // namespace orvel
