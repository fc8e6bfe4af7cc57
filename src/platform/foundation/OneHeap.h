#pragma once

namespace orvel {

// Keeps all threads' memory in one heap (glibc; no effect elsewhere). By default each thread of a station has
// a heap of its own, which keeps what was freed. Call first in main, before there are threads.
void keepOneHeap();

} // namespace orvel
