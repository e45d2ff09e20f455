// WorkspaceProjectSnapshot: the in-memory result of loading a project folder, the record all
// read-side code works on. Only metadata, folders and cards have a JSON form (their own records);
// the other fields are load results and are never encoded. A plain value; concurrent reads are
// safe.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "workspace_store/card_record.h"
#include "workspace_store/folder_record.h"
#include "workspace_store/project_metadata.h"
#include "workspace_store/workspace_compile_diagnostic.h"
#include "workspace_store/workspace_project_storage_mode.h"

namespace zorvik {

struct WorkspaceProjectSnapshot {
  std::filesystem::path rootURL;  // the project root
  WorkspaceProjectStorageMode storageMode = WorkspaceProjectStorageMode::filesystem;
  ProjectMetadata metadata;
  std::vector<FolderRecord> folders;
  std::vector<CardRecord> cards;  // in entry order, entries that failed to resolve left out
  std::vector<WorkspaceCompileDiagnostic> loadDiagnostics;  // entries that failed to resolve
  int checkedFiles = 0;                                     // how many files were read
  std::string projectFingerprint;                           // lower-case hexadecimal SHA-256

  bool operator==(const WorkspaceProjectSnapshot&) const = default;
};

}  // namespace zorvik
