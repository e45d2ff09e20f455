// RuntimeHeartbeat: the record the desktop application keeps rewriting while it has a project open,
// in `<project>/.zorvik-control/runtime.json` and in the per-user runtime registry file.
//
// A heartbeat counts as live when its timestamp lies within kHeartbeatFreshnessSeconds of now in
// either direction; a clock running a little ahead of ours is tolerated on purpose. Nothing checks
// the process id, so a crashed application is noticed only once its heartbeat has aged.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

inline constexpr double kHeartbeatFreshnessSeconds = 5.0;

struct RuntimeHeartbeat {
  std::string projectPath;                      // "project_path"
  std::vector<std::string> capabilities;        // "capabilities"; absent reads as empty
  Date timestamp;                               // "timestamp"
  std::optional<std::string> bundleIdentifier;  // "bundle_identifier"
  std::optional<int64_t> processID;             // "process_id"
  bool isForeground = false;                    // "is_foreground"; absent reads as false

  // Throws DecodingError; project_path and timestamp are required.
  static RuntimeHeartbeat decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const RuntimeHeartbeat&) const = default;
};

// |timestamp - now| <= 5.0 seconds.
bool isHeartbeatFresh(Date timestamp, Date now);

// The heartbeat stored at `path`; nullopt when the file cannot be read, is not JSON or does not
// decode. Never throws.
std::optional<RuntimeHeartbeat> readRuntimeHeartbeat(const std::filesystem::path& path);

}  // namespace zorvik
