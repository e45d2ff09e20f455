// CheckpointFolder: one folder of checkpoint files, one JSON record a file, named
// "{ms}-{checkpointID}.json" where {ms} is the creation time in whole milliseconds since 1970.
//
// Names begin with a millisecond count of constant width, so name order is age order. Every write
// is atomic and durable (a hidden temporary file renamed into place), so readers and concurrent
// writers only ever see whole files, and unique names keep writers apart: no lock is taken. Entries
// count as checkpoint files when their extension, lower-cased, is ".json"; unreadable and corrupt
// ones still count for pruning and are skipped by readers. The object only names the folder; it is
// safe from any thread.
#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_decoder.h"

namespace zorvik {

class CheckpointFolder {
 public:
  explicit CheckpointFolder(std::filesystem::path location) : location_(std::move(location)) {}

  const std::filesystem::path& location() const { return location_; }

  static std::string fileName(Date createdAt, std::string_view checkpointID);

  // Creates the folder and its parents when needed and writes `record` as pretty JSON with sorted
  // keys under `fileName`; returns the file's path. Throws std::filesystem::filesystem_error or
  // std::system_error when the folder or file cannot be written, std::runtime_error when the record
  // holds a non-finite number; nothing half-written remains either way.
  std::filesystem::path write(const std::string& fileName, const AnyCodableValue& record) const;

  // Removes the oldest checkpoint files (by name) until at most `maxEntries` remain (at least one
  // is always kept). Failures to list or remove are ignored.
  void prune(int maxEntries) const noexcept;

  // Every checkpoint file's record that can be read, parsed and decoded as Record, in no particular
  // order; the rest are skipped. A missing folder gives an empty list. Never throws for a file's
  // contents.
  template <class Record>
  std::vector<Record> readAll() const {
    std::vector<Record> records;
    for (const std::filesystem::path& file : checkpointFiles()) {
      std::optional<AnyCodableValue> value = readJSON(file);
      if (!value) continue;
      try {
        records.push_back(decodeValue<Record>(*value));
      } catch (const std::exception&) {
        // A record of another shape: skipped like unreadable text.
      }
    }
    return records;
  }

  // The paths of the checkpoint files, in no particular order; empty when the folder is missing
  // or cannot be listed.
  std::vector<std::filesystem::path> checkpointFiles() const;

  // The parsed contents of one file; nullopt when it cannot be read or is no JSON.
  static std::optional<AnyCodableValue> readJSON(const std::filesystem::path& file);

 private:
  std::filesystem::path location_;
};

}  // namespace zorvik
