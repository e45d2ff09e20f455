// WorkspaceCompileResult: the answer of a compile. JSON keys "status" ("ok" or "error"),
// "compile_token" (lower-case hexadecimal SHA-256), "summary" and "diagnostics" (the reported
// diagnostics, after the errors-only filter and the cap), all required on decoding. A plain value.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"
#include "workspace_store/compiler/workspace_compile_summary.h"
#include "workspace_store/workspace_compile_diagnostic.h"

namespace zorvik {

class ValueDecoder;

// "error" when the compile found at least one error, else "ok"; warnings never decide it.
enum class WorkspaceCompileStatus { ok, error };

template <>
struct EnumRawValues<WorkspaceCompileStatus> {
  static constexpr std::string_view typeName = "WorkspaceCompileStatus";
  static constexpr std::array table{
      std::pair{WorkspaceCompileStatus::ok, std::string_view("ok")},
      std::pair{WorkspaceCompileStatus::error, std::string_view("error")},
  };
};

struct WorkspaceCompileResult {
  WorkspaceCompileStatus status = WorkspaceCompileStatus::ok;
  std::string compileToken;  // "compile_token"
  WorkspaceCompileSummary summary;
  std::vector<WorkspaceCompileDiagnostic> diagnostics;

  static WorkspaceCompileResult decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCompileResult&) const = default;
};

}  // namespace zorvik
