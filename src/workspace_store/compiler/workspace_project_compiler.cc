#include "workspace_store/compiler/workspace_project_compiler.h"

#include <algorithm>
#include <string>

#include "foundation/sha256.h"
#include "foundation/standardized_path.h"
#include "workspace_store/compiler/diagnostic_ownership.h"
#include "workspace_store/compiler/workspace_project_checks.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {
namespace {

constexpr const char* kProjectHint =
    "Ensure the folder workspace and `.zorvik/workspace.json` are valid JSON, schema-compliant, "
    "and all referenced files are readable.";

int64_t millisecondsSince(std::chrono::steady_clock::time_point startedAt) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               startedAt)
      .count();
}

// The result of a project that could not be loaded at all.
WorkspaceCompileResult loadFailure(const std::filesystem::path& projectURL,
                                   const std::string& diagnosticPath,
                                   const std::string& description,
                                   std::chrono::steady_clock::time_point startedAt) {
  const DiagnosticOwnership ownership = diagnosticOwnershipForFailure(projectURL, diagnosticPath);
  WorkspaceCompileResult result;
  result.status = WorkspaceCompileStatus::error;
  result.diagnostics.push_back(WorkspaceCompileDiagnostic{
      .severity = WorkspaceCompileSeverity::error,
      .code = "parse.project",
      .message = description,
      .path = diagnosticPath,
      .hint = std::string(kProjectHint),
      .owner = ownership.owner,
      .actionability = ownership.actionability,
  });
  result.summary =
      WorkspaceCompileSummary{.errorCount = 1, .elapsedMS = millisecondsSince(startedAt)};
  result.compileToken =
      sha256Hex("error|" + standardizedPath(projectURL).string() + "|" + description);
  return result;
}

}  // namespace

WorkspaceProjectCompiler::WorkspaceProjectCompiler(WorkspaceProjectSnapshotStore snapshotStore)
    : snapshotStore_(snapshotStore) {}

WorkspaceCompileResult WorkspaceProjectCompiler::compile(
    const std::filesystem::path& projectURL, const WorkspaceCompileRequest& request) const {
  const auto startedAt = std::chrono::steady_clock::now();
  const std::string projectPath = standardizedPath(projectURL).string();
  WorkspaceProjectSnapshot snapshot;
  try {
    snapshot = snapshotStore_.load(projectURL);
  } catch (const WorkspaceProjectSnapshotError& error) {
    const bool missing = error.kind() == WorkspaceProjectSnapshotError::Kind::missingProjectFile;
    return loadFailure(projectURL, missing ? projectPath : error.path(), error.what(), startedAt);
  } catch (const std::exception& error) {
    return loadFailure(projectURL, projectPath, error.what(), startedAt);
  } catch (...) {
    return loadFailure(projectURL, projectPath, "The project could not be loaded.", startedAt);
  }
  return compileSnapshot(snapshot, request, startedAt);
}

WorkspaceCompileResult WorkspaceProjectCompiler::compileSnapshot(
    const WorkspaceProjectSnapshot& snapshot, const WorkspaceCompileRequest& request,
    std::chrono::steady_clock::time_point startedAt) {
  std::vector<WorkspaceCompileDiagnostic> diagnostics = snapshot.loadDiagnostics;
  WorkspaceProjectChecks(snapshot).appendAll(diagnostics);

  WorkspaceCompileResult result;
  const auto limit = static_cast<size_t>(std::max<int64_t>(request.maxDiagnostics, 1));
  for (WorkspaceCompileDiagnostic& diagnostic : diagnostics) {
    const bool isError = diagnostic.severity == WorkspaceCompileSeverity::error;
    ++(isError ? result.summary.errorCount : result.summary.warningCount);
    if (result.diagnostics.size() < limit && (isError || request.includeWarnings)) {
      result.diagnostics.push_back(std::move(diagnostic));
    }
  }
  result.status =
      result.summary.errorCount > 0 ? WorkspaceCompileStatus::error : WorkspaceCompileStatus::ok;
  result.summary.checkedFiles = snapshot.checkedFiles;
  result.summary.cardCount = static_cast<int64_t>(snapshot.cards.size());
  result.summary.elapsedMS = millisecondsSince(startedAt);
  result.compileToken =
      sha256Hex(snapshot.metadata.projectId + "|" + snapshot.projectFingerprint + "|" +
                std::to_string(snapshot.cards.size()) + "|" + std::string(rawValue(result.status)) +
                "|" + std::to_string(result.summary.errorCount) + "|" +
                std::to_string(result.summary.warningCount));
  return result;
}

}  // namespace zorvik
