#include "foundation/atomic_file.h"

#include "support/temp_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace zorvik {
namespace {

namespace fs = std::filesystem;

class AtomicFileTest : public ::testing::Test {
 protected:
  std::vector<std::string> folderEntries() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  testing::TempDirectory temp_;
  const fs::path& folder_ = temp_.path();
};

using Replace = void (*)(const fs::path&, std::string_view);

TEST_F(AtomicFileTest, ReplacesExistingFilesLeavingNoTemporaries) {
  const fs::path target = folder_ / "state.json";
  for (Replace replace : {&writeFileAtomically, &replaceFileByRename}) {
    replace(target, "first");
    EXPECT_EQ(readFileContents(target), "first");
    const std::string binary("new\0contents\xff", 13);
    replace(target, binary);
    EXPECT_EQ(readFileContents(target), binary);
    replace(target, "");
    EXPECT_EQ(readFileContents(target), "");
    EXPECT_EQ(folderEntries(), std::vector<std::string>{"state.json"});
  }
}

TEST_F(AtomicFileTest, WritesRelativeToTheWorkingFolder) {
  const fs::path previous = fs::current_path();
  fs::current_path(folder_);
  writeFileAtomically("plain.txt", "here");
  fs::current_path(previous);
  EXPECT_EQ(readFileContents(folder_ / "plain.txt"), "here");
  EXPECT_EQ(folderEntries(), std::vector<std::string>{"plain.txt"});
}

TEST_F(AtomicFileTest, FailuresLeaveNoTemporaries) {
  const fs::path target = folder_ / "missing" / "file.txt";
  for (Replace replace : {&writeFileAtomically, &replaceFileByRename}) {
    try {
      replace(target, "data");
      ADD_FAILURE() << "expected a system_error";
    } catch (const std::system_error& error) {
      EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
      EXPECT_NE(std::string(error.what()).find(target.string()), std::string::npos) << error.what();
    }
  }
  // A folder in the way makes the final rename fail after the temporary was written.
  fs::create_directory(folder_ / "taken");
  EXPECT_THROW(writeFileAtomically(folder_ / "taken", "data"), std::system_error);
  EXPECT_THROW(replaceFileByRename(folder_ / "taken", "data"), std::system_error);
  EXPECT_EQ(folderEntries(), std::vector<std::string>{"taken"});
}

TEST_F(AtomicFileTest, ConcurrentWritersAlwaysLeaveAWholeFile) {
  const fs::path target = folder_ / "shared.bin";
  constexpr size_t kSize = 96 * 1024;
  writeFileAtomically(target, std::string(kSize, '-'));
  const auto isWhole = [](const std::optional<std::string>& contents) {
    return contents && contents->size() == kSize &&
           contents->find_first_not_of((*contents)[0]) == std::string::npos;
  };

  std::atomic<bool> done{false};
  std::atomic<int> tornReads{0};
  std::thread reader([&] {
    while (!done) {
      if (!isWhole(readFileContents(target))) ++tornReads;
    }
  });
  std::vector<std::thread> writers;
  for (char letter : std::string("abcd")) {
    writers.emplace_back([&target, letter] {
      for (int i = 0; i < 25; ++i) {
        const std::string contents(kSize, letter);
        if (i % 2 == 0) {
          writeFileAtomically(target, contents);
        } else {
          replaceFileByRename(target, contents);
        }
      }
    });
  }
  for (auto& writer : writers) writer.join();
  done = true;
  reader.join();

  EXPECT_EQ(tornReads, 0);
  const auto final = readFileContents(target);
  EXPECT_TRUE(isWhole(final));
  EXPECT_NE(std::string("abcd").find((*final)[0]), std::string::npos);
  EXPECT_EQ(folderEntries(), std::vector<std::string>{"shared.bin"});
}

TEST_F(AtomicFileTest, ReadingMissingFilesAndFoldersGivesNothing) {
  EXPECT_EQ(readFileContents(folder_ / "absent"), std::nullopt);
  EXPECT_EQ(readFileContents(folder_), std::nullopt);
  const std::string large(300 * 1024, 'z');
  replaceFileByRename(folder_ / "large", large);
  EXPECT_EQ(readFileContents(folder_ / "large"), large);
}

}  // namespace
}  // namespace zorvik
