#include "foundation/parallel_for.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace zorvik {

void parallelFor(size_t count, const std::function<void(size_t)>& body, size_t minimumPerThread) {
  constexpr size_t kBatch = 32;
  constexpr size_t kMaximumThreads = 8;
  std::atomic<size_t> next{0};
  std::mutex failureMutex;
  std::exception_ptr failure;
  const auto work = [&] {
    try {
      for (size_t start = next.fetch_add(kBatch); start < count; start = next.fetch_add(kBatch)) {
        for (size_t i = start; i < std::min(start + kBatch, count); ++i) body(i);
      }
    } catch (...) {
      next = count;  // the other threads stop at their next batch
      const std::lock_guard lock(failureMutex);
      if (!failure) failure = std::current_exception();
    }
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
