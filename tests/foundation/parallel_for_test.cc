#include "foundation/parallel_for.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
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

TEST(ParallelForTest, RethrowsTheLowestFailingIndexAsAPlainLoopWould) {
  for (int round = 0; round < 20; ++round) {
    std::vector<std::atomic<int>> calls(100000);
    try {
      parallelFor(
          calls.size(),
          [&](size_t i) {
            calls[i].fetch_add(1);
            if (i == 40 || i == 41 || i == 700) throw std::runtime_error(std::to_string(i));
          },
          16);
      FAIL() << "no failure reported";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "40");
    }
    for (size_t i = 0; i < 40; ++i) ASSERT_EQ(calls[i].load(), 1) << i;
    // Work not yet handed out is skipped once a call fails.
    size_t started = 0;
    for (const auto& count : calls) started += static_cast<size_t>(count.load());
    EXPECT_LT(started, calls.size());
  }
}

TEST(ParallelForTest, NestedLoopsRunOnTheirCallingThread) {
  std::vector<std::atomic<int>> calls(64 * 64);
  std::atomic<bool> innerLeftItsThread{false};
  parallelFor(
      64,
      [&](size_t outer) {
        const auto caller = std::this_thread::get_id();
        parallelFor(
            64,
            [&](size_t inner) {
              if (std::this_thread::get_id() != caller) innerLeftItsThread = true;
              calls[outer * 64 + inner].fetch_add(1);
            },
            1);
      },
      1);
  EXPECT_FALSE(innerLeftItsThread.load());
  for (const auto& count : calls) ASSERT_EQ(count.load(), 1);
}

}  // namespace
}  // namespace zorvik
