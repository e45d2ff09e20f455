#include "foundation/log.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "foundation/atomic_file.h"
#include "foundation/iso8601_date.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;

class LogTest : public ::testing::Test {
 protected:
  void SetUp() override { ::setenv("ZORVIK_LOG_FILE", file_.c_str(), 1); }
  void TearDown() override { ::unsetenv("ZORVIK_LOG_FILE"); }

  std::vector<std::string> lines() const {
    std::vector<std::string> result;
    std::istringstream stream(readFileContents(file_).value_or(""));
    for (std::string line; std::getline(stream, line);) result.push_back(line);
    return result;
  }

  testing::TempDirectory temp_;
  const fs::path file_ = temp_.path() / "events.log";
};

TEST_F(LogTest, AppendsOneFormattedLinePerEvent) {
  const Date before = floor<std::chrono::seconds>(currentDate());
  const Log log("engine", "store");
  log.debug("d");
  log.info("two words");
  log.notice("n");
  log.error("line one\nline two\r\nthree");
  log.fault("");
  const Date after = currentDate();

  const std::vector<std::string> expected = {
      "engine/store debug d",  "engine/store info two words",
      "engine/store notice n", "engine/store error line one line two  three",
      "engine/store fault ",
  };
  const std::vector<std::string> written = lines();
  ASSERT_EQ(written.size(), expected.size());
  const std::regex timePrefix(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ )");
  for (size_t i = 0; i < written.size(); ++i) {
    ASSERT_TRUE(std::regex_search(written[i], timePrefix)) << written[i];
    EXPECT_EQ(written[i].substr(21), expected[i]);
    const auto time = parseISO8601(written[i].substr(0, 20));
    ASSERT_TRUE(time.has_value());
    EXPECT_GE(*time, before);
    EXPECT_LE(*time, after);
  }
  EXPECT_EQ(readFileContents(file_)->back(), '\n');
}

TEST_F(LogTest, KeepsExistingContentAndStaysOffTheStandardStreams) {
  replaceFileByRename(file_, "earlier line\n");
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  Log("a", "b").error("visible only in the file");
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  const auto written = lines();
  ASSERT_EQ(written.size(), 2u);
  EXPECT_EQ(written[0], "earlier line");
  EXPECT_EQ(written[1].substr(20), " a/b error visible only in the file");
}

TEST_F(LogTest, WritesNoFileWithoutTheVariable) {
  ::unsetenv("ZORVIK_LOG_FILE");
  Log("a", "b").info("nowhere");
  EXPECT_FALSE(fs::exists(file_));
  // An unwritable destination is silently ignored.
  ::setenv("ZORVIK_LOG_FILE", (file_ / "not-a-folder" / "x.log").c_str(), 1);
  EXPECT_NO_THROW(Log("a", "b").info("nowhere either"));
}

TEST_F(LogTest, LinesFromConcurrentThreadsStayWhole) {
  constexpr int kThreads = 4;
  constexpr int kEvents = 150;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t] {
      const Log log("worker", std::to_string(t));
      const std::string payload(3000, static_cast<char>('a' + t));
      for (int i = 0; i < kEvents; ++i) log.info(payload);
    });
  }
  for (auto& thread : threads) thread.join();

  const std::vector<std::string> written = lines();
  ASSERT_EQ(written.size(), static_cast<size_t>(kThreads * kEvents));
  std::vector<int> perThread(kThreads, 0);
  for (const std::string& line : written) {
    ASSERT_EQ(line.size(), 21 + std::string("worker/0 info ").size() + 3000) << line.substr(0, 60);
    const int t = line[28] - '0';
    ASSERT_GE(t, 0);
    ASSERT_LT(t, kThreads);
    EXPECT_EQ(line.substr(21), "worker/" + std::to_string(t) + " info " +
                                   std::string(3000, static_cast<char>('a' + t)));
    ++perThread[t];
  }
  EXPECT_EQ(perThread, std::vector<int>(kThreads, kEvents));
}

}  // namespace
}  // namespace zorvik
