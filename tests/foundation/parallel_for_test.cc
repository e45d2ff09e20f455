#include "foundation/parallel_for.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace zorvik {
namespace {

TEST(ParallelForTest, CallsEveryIndexExactlyOnce) {
  for (size_t count : {0u, 1u, 31u, 33u, 1000u, 10007u}) {
    std::vector<std::atomic<int>> calls(count);
    parallelFor(
        count, [&](size_t i) { calls[i].fetch_add(1); }, 16);
    for (size_t i = 0; i < count; ++i) ASSERT_EQ(calls[i].load(), 1) << count << " / " << i;
  }
}

TEST(ParallelForTest, RethrowsTheFirstFailureAfterEveryThreadStopped) {
  std::atomic<size_t> started{0};
  EXPECT_THROW(parallelFor(
                   100000,
                   [&](size_t i) {
                     started.fetch_add(1);
                     if (i == 40) throw std::runtime_error("card 40");
                   },
                   16),
               std::runtime_error);
  // Work not yet handed out is skipped once a call fails.
  EXPECT_LT(started.load(), 100000u);
}

}  // namespace
}  // namespace zorvik
