// Who owns a project that failed to load, judged from the file the failure names.
#pragma once

#include <filesystem>
#include <string>

#include "workspace_store/workspace_compile_diagnostic.h"

namespace zorvik {

struct DiagnosticOwnership {
  WorkspaceCompileDiagnosticOwner owner = WorkspaceCompileDiagnosticOwner::unknown;
  WorkspaceCompileDiagnosticActionability actionability =
      WorkspaceCompileDiagnosticActionability::inspect;
  bool operator==(const DiagnosticOwnership&) const = default;
};

// When `path` ends in ".json", the file at `path` (relative to `projectURL`, or absolute) is read
// and parsed. A JSON object holding an object under "payload" is a card file: runtime/report_only
// when that payload is runtime-managed (an invisible chat), else user/fixable. In every other case,
// failures to read or parse included: unknown/inspect. Never throws; reads the file once.
DiagnosticOwnership diagnosticOwnershipForFailure(const std::filesystem::path& projectURL,
                                                  const std::string& path);

}  // namespace zorvik
