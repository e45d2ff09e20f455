// The JSON schemas of a compile's answer, shared by compile_project and create_project.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

// WorkspaceCompileSummary: checked_files, card_count, error_count, warning_count, elapsed_ms.
AnyCodableValue compileSummarySchema();
// WorkspaceCompileDiagnostic: severity, code, message, path, card_id, hint, owner, actionability.
AnyCodableValue compileDiagnosticSchema();
// WorkspaceCompileResult: status, compile_token, summary, diagnostics.
AnyCodableValue compileResultSchema();

}  // namespace zorvik
