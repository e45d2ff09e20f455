// WorkspaceProjectCompiler: headless validation of a project folder. It loads the snapshot, runs
// the semantic checks of WorkspaceProjectChecks after the loader's own diagnostics, and answers
// with the reported diagnostics, the counts and a compile token. It changes nothing on disk.
//
// Reporting: `maxDiagnostics` below 1 acts as 1; the reported list is a plain prefix of all
// diagnostics (errors of the checks come before warnings), of the errors only when
// `includeWarnings` is false. The summary's error and warning counts and the status ("error" when
// any error was found) always cover the whole list. `mode` and `changedPaths` never change a
// result: every compile checks the whole project.
//
// Token: lower-case hexadecimal SHA-256 of "projectId|projectFingerprint|cardCount|status|
// errorCount|warningCount", so an unchanged project gives the same token on every compile. A
// project that fails to load gives status "error" with one "parse.project" diagnostic (path: the
// failing file, or the project path when the project file is missing; ownership from
// diagnosticOwnershipForFailure), zero counts but one error, and the token of
// "error|<standardised project path>|<failure description>".
//
// compile never throws. The compiler keeps no state besides its store; concurrent compiles are
// safe.
#pragma once

#include <chrono>
#include <filesystem>

#include "workspace_store/compiler/workspace_compile_request.h"
#include "workspace_store/compiler/workspace_compile_result.h"
#include "workspace_store/workspace_project_snapshot.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {

class WorkspaceProjectCompiler {
 public:
  explicit WorkspaceProjectCompiler(WorkspaceProjectSnapshotStore snapshotStore = {});

  WorkspaceCompileResult compile(const std::filesystem::path& projectURL,
                                 const WorkspaceCompileRequest& request) const;

  // What compile answers once `snapshot` has loaded: the checks, the cap and the token.
  // `startedAt` is when the compile began; elapsed_ms counts from there.
  static WorkspaceCompileResult compileSnapshot(
      const WorkspaceProjectSnapshot& snapshot, const WorkspaceCompileRequest& request,
      std::chrono::steady_clock::time_point startedAt = std::chrono::steady_clock::now());

 private:
  WorkspaceProjectSnapshotStore snapshotStore_;
};

}  // namespace zorvik
