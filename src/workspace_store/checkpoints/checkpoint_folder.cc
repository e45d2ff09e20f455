#include "workspace_store/checkpoints/checkpoint_folder.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "foundation/atomic_file.h"
#include "foundation/json/json_writer.h"
#include "foundation/text.h"

namespace zorvik {

std::string CheckpointFolder::fileName(Date createdAt, std::string_view checkpointID) {
  const auto milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(createdAt.time_since_epoch()).count();
  return std::to_string(milliseconds) + "-" + std::string(checkpointID) + ".json";
}

std::filesystem::path CheckpointFolder::write(const std::string& fileName,
                                              const AnyCodableValue& record) const {
  std::optional<std::string> json = writeJSON(record, JSONStyle::pretty);
  if (!json) {
    throw std::runtime_error("Checkpoint " + fileName + " holds a number JSON cannot express.");
  }
  std::filesystem::create_directories(location_);
  const std::filesystem::path file = location_ / fileName;
  writeFileAtomically(file, *json);
  return file;
}

void CheckpointFolder::prune(int maxEntries) const noexcept {
  try {
    const size_t keep = static_cast<size_t>(std::max(maxEntries, 1));
    std::vector<std::filesystem::path> files = checkpointFiles();
    if (files.size() <= keep) return;
    std::vector<std::string> names;
    names.reserve(files.size());
    for (const auto& file : files) names.push_back(file.filename().native());
    std::sort(names.begin(), names.end());
    for (size_t i = 0; i + keep < names.size(); ++i) {
      std::error_code ignored;
      std::filesystem::remove(location_ / names[i], ignored);
    }
  } catch (const std::exception&) {
    // Pruning never fails a capture; whatever was left stays for the next prune.
  }
}

std::vector<std::filesystem::path> CheckpointFolder::checkpointFiles() const {
  std::vector<std::filesystem::path> files;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(location_, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::filesystem::path& path = entry->path();
    if (lowercased(path.extension().string()) == ".json") files.push_back(path);
  }
  return files;
}

std::optional<AnyCodableValue> CheckpointFolder::readJSON(const std::filesystem::path& file) {
  std::optional<std::string> text = readFileContents(file);
  if (!text) return std::nullopt;
  try {
    return AnyCodableValue::parse(*text);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace zorvik
