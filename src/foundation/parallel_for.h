// parallelFor: runs independent pieces of work on the machine's cores.
#pragma once

#include <cstddef>
#include <functional>

namespace zorvik {

// Calls body(i) once for every i in [0, count), on the calling thread and up to seven helper
// threads (no more than the cores, and one thread per `minimumPerThread` indices), handing out
// indices in small batches. Returns when every call has returned. `body` must be safe to run
// concurrently for different indices. If a call throws, indices not yet started are skipped and
// the first exception is rethrown once every thread has stopped.
void parallelFor(size_t count, const std::function<void(size_t)>& body,
                 size_t minimumPerThread = 256);

}  // namespace zorvik
