// parallelFor: runs independent pieces of work on the machine's cores.
#pragma once

#include <cstddef>
#include <functional>

namespace zorvik {

// Calls body(i) once for every i in [0, count), on the calling thread and up to seven helper
// threads (no more than the cores, and one thread per `minimumPerThread` indices), handing out
// indices in small batches in increasing order. Returns when every call has returned. `body` must
// be safe to run concurrently for different indices.
//
// If calls throw, every index below the lowest one that threw has still run, later indices may be
// skipped, and that lowest index's exception is rethrown: the same error a plain loop would give.
//
// A parallelFor started from inside a body runs on its calling thread alone, so nested work never
// multiplies the threads.
void parallelFor(size_t count, const std::function<void(size_t)>& body,
                 size_t minimumPerThread = 256);

}  // namespace zorvik
