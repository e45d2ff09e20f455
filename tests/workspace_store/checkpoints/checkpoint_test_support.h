// Boards on disk for the checkpoint tests: a project folder whose workspace document is written
// from entry texts, so that tests can change one field at a time and control key order.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "support/temp_directory.h"
#include "workspace_store/checkpoints/checkpoint_folder.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"

namespace zorvik::testing {

// A canonical upper-case UUID numbered `n`.
inline std::string cardUUID(int n) {
  char text[40];
  std::snprintf(text, sizeof text, "%08X-0000-4000-8000-000000000000", n);
  return text;
}

// `seconds` after the start of 2026.
inline Date at(int64_t seconds) { return Date(std::chrono::seconds(1767225600 + seconds)); }

inline std::string quoted(const std::string& text) {
  return AnyCodableValue(text).compactJSONString().value();
}

// The parts of one workspace entry that tests vary.
struct TestEntry {
  int n = 1;
  std::string title = "Note";
  std::string markdown = "text";
  double x = 10;
  int zIndex = 1;
  std::string createdAt = "2026-01-01T00:00:00Z";
};

// A rich-text card that lives wholly in the workspace document.
inline std::string entryJSON(const TestEntry& entry) {
  return R"({"id":")" + cardUUID(entry.n) + R"(","kindRawValue":"richText","title":)" +
         quoted(entry.title) + R"(,"shadowEnabled":false,"createdAt":")" + entry.createdAt +
         R"(","layout":{"position":{"x":)" + std::to_string(entry.x) + R"(,"y":20},"zIndex":)" +
         std::to_string(entry.zIndex) + R"(,"actualWidth":300,"actualHeight":200},)" +
         R"("payload":{"type":"richText","richText":{"markdown":)" + quoted(entry.markdown) + "}}}";
}

// The document-level parts that tests vary.
struct TestDocument {
  int version = 1;
  std::string projectId = "PROJECT-1";
  std::string updatedAt = "2026-01-02T00:00:00Z";
  std::string uiState = R"({"backgroundStyle":"Dots"})";
};

inline std::string workspaceJSON(const std::vector<std::string>& entries,
                                 const TestDocument& document = {}) {
  std::string joined;
  for (const auto& entry : entries) joined += (joined.empty() ? "" : ",") + entry;
  return R"({"version":)" + std::to_string(document.version) + R"(,"projectId":)" +
         quoted(document.projectId) + R"(,"createdAt":"2026-01-01T00:00:00Z","updatedAt":")" +
         document.updatedAt + R"(","uiState":)" + document.uiState + R"(,"entries":[)" + joined +
         "]}";
}

inline std::vector<std::string> entriesOf(const std::vector<TestEntry>& cards) {
  std::vector<std::string> entries;
  for (const auto& card : cards) entries.push_back(entryJSON(card));
  return entries;
}

// A project folder in a fresh temporary directory.
class TestProject {
 public:
  const std::filesystem::path& path() const { return directory_.path(); }

  void writeBoard(const std::vector<TestEntry>& cards, const TestDocument& document = {}) const {
    writeDocument(workspaceJSON(entriesOf(cards), document));
  }
  void writeDocument(const std::string& json) const {
    directory_.write(".zorvik/workspace.json", json);
  }
  std::filesystem::path write(const std::string& relative, const std::string& contents) const {
    return directory_.write(relative, contents);
  }

  // The names of the entries of a folder below the project, sorted.
  std::vector<std::string> fileNames(const std::string& relativeFolder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(path() / relativeFolder, error)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  TempDirectory directory_;
};

// Writes `record` into `folder` below `root` as the store names it, as another writer might.
template <class Record>
Record writeRecord(const std::filesystem::path& root, std::string_view folder,
                   const Record& record) {
  CheckpointFolder(root / folder)
      .write(CheckpointFolder::fileName(record.createdAt, record.checkpointID), record.encode());
  return record;
}

// A project checkpoint entry of `trigger` at `createdAt`, written below `root`.
inline WorkspaceProjectStateCheckpoint writeStateEntry(const std::filesystem::path& root,
                                                       std::string id, Date createdAt,
                                                       WorkspaceProjectCheckpointTrigger trigger) {
  return writeRecord(root, WorkspaceProjectMutationCheckpointStore::kStateCheckpointsFolder,
                     WorkspaceProjectStateCheckpoint{.checkpointID = std::move(id),
                                                     .createdAt = createdAt,
                                                     .projectPath = root.string(),
                                                     .trigger = trigger,
                                                     .stateHash = "s",
                                                     .projectFingerprint = "f"});
}

}  // namespace zorvik::testing
