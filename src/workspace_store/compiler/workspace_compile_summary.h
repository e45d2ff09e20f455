// WorkspaceCompileSummary: the counts of one compile. JSON keys "checked_files", "card_count",
// "error_count", "warning_count", "elapsed_ms", all integers and all required on decoding. The
// error and warning counts cover every diagnostic found, before any filter or cap. A plain value.
#pragma once

#include <cstdint>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceCompileSummary {
  int64_t checkedFiles = 0;  // "checked_files": files the load read
  int64_t cardCount = 0;     // "card_count": cards that loaded
  int64_t errorCount = 0;    // "error_count"
  int64_t warningCount = 0;  // "warning_count"
  int64_t elapsedMS = 0;     // "elapsed_ms": whole milliseconds, truncated

  static WorkspaceCompileSummary decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCompileSummary&) const = default;
};

}  // namespace zorvik
