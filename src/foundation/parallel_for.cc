#include "foundation/parallel_for.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace zorvik {
namespace {

// Set on every thread while it runs bodies of a parallelFor.
thread_local bool insideParallelFor = false;

}  // namespace

void parallelFor(size_t count, const std::function<void(size_t)>& body, size_t minimumPerThread) {
  if (insideParallelFor) {
    for (size_t i = 0; i < count; ++i) body(i);
    return;
  }
  constexpr size_t kBatch = 32;
  constexpr size_t kMaximumThreads = 8;
  std::atomic<size_t> next{0};
  std::mutex failureMutex;
  size_t failedIndex = count;
  std::exception_ptr failure;
  const auto work = [&] {
    insideParallelFor = true;
    for (size_t start = next.fetch_add(kBatch); start < count; start = next.fetch_add(kBatch)) {
      const size_t end = std::min(start + kBatch, count);
      for (size_t i = start; i < end; ++i) {
        try {
          body(i);
        } catch (...) {
          next = count;  // batches not yet handed out are skipped
          const std::lock_guard lock(failureMutex);
          if (i < failedIndex) {
            failedIndex = i;
            failure = std::current_exception();
          }
          break;
        }
      }
    }
    insideParallelFor = false;
  };
  const size_t threads =
      std::min<size_t>({std::max(1u, std::thread::hardware_concurrency()), kMaximumThreads,
                        count / std::max<size_t>(minimumPerThread, 1) + 1});
  {
    std::vector<std::jthread> helpers;
    for (size_t t = 1; t < threads; ++t) helpers.emplace_back(work);
    work();
  }  // the helpers join here
  if (failure) std::rethrow_exception(failure);
}

}  // namespace zorvik
