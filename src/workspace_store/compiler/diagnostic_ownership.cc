#include "workspace_store/compiler/diagnostic_ownership.h"

#include "foundation/atomic_file.h"
#include "workspace_store/compiler/compile_card_kind.h"

namespace zorvik {

DiagnosticOwnership diagnosticOwnershipForFailure(const std::filesystem::path& projectURL,
                                                  const std::string& path) {
  const DiagnosticOwnership unknown;
  if (!path.ends_with(".json")) return unknown;
  try {
    const std::optional<std::string> text = readFileContents(projectURL / path);
    if (!text) return unknown;
    const AnyCodableValue document = AnyCodableValue::parse(*text);
    const AnyCodableValue* payload = document.member("payload");
    if (!payload || !payload->isObject()) return unknown;
    if (isRuntimeManagedPayload(*payload)) {
      return {WorkspaceCompileDiagnosticOwner::runtime,
              WorkspaceCompileDiagnosticActionability::reportOnly};
    }
    return {WorkspaceCompileDiagnosticOwner::user,
            WorkspaceCompileDiagnosticActionability::fixable};
  } catch (...) {
    return unknown;
  }
}

}  // namespace zorvik
