// WorkspaceCompileRequest: what a caller asks of a compile.
//
// JSON keys: "project_path" (optional string), "mode" ("incremental" or "full", default
// "incremental"), "changed_paths" (optional array of strings), "include_warnings" (default true),
// "max_diagnostics" (default 200). Absent and null keys mean the same; an unknown mode throws
// DecodingError. Every compile checks the whole project: `mode` and `changedPaths` are carried for
// callers and never change a result. A plain value.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"

namespace zorvik {

class ValueDecoder;

enum class WorkspaceCompileMode { incremental, full };

template <>
struct EnumRawValues<WorkspaceCompileMode> {
  static constexpr std::string_view typeName = "WorkspaceCompileMode";
  static constexpr std::array table{
      std::pair{WorkspaceCompileMode::incremental, std::string_view("incremental")},
      std::pair{WorkspaceCompileMode::full, std::string_view("full")},
  };
};

struct WorkspaceCompileRequest {
  std::optional<std::string> projectPath;  // "project_path"; absent means the session's project
  WorkspaceCompileMode mode = WorkspaceCompileMode::incremental;
  std::optional<std::vector<std::string>> changedPaths;  // "changed_paths"
  bool includeWarnings = true;                           // "include_warnings"
  int64_t maxDiagnostics = 200;                          // "max_diagnostics"; below 1 acts as 1

  static WorkspaceCompileRequest decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCompileRequest&) const = default;
};

}  // namespace zorvik
