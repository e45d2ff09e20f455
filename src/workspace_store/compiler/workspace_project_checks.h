// WorkspaceProjectChecks: the semantic checks of a loaded project, in the compiler's fixed order:
// structure (ids, parents, cycles), layouts, snap constraints, group stacks, then the warnings.
//
// Each check appends its diagnostics in card order; none stops another, and none throws for any
// snapshot content. A diagnostic bound to a card carries the card's path and id; its owner is the
// runtime (report_only) when that card is runtime-managed (an invisible chat), else the user
// (fixable). Orphan folder warnings always belong to the user.
//
// The object borrows the snapshot, which must outlive it, and builds its lookup tables once at
// construction. Const methods only; concurrent calls are safe.
#pragma once

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "foundation/uuid.h"
#include "workspace_store/workspace_compile_diagnostic.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

class WorkspaceProjectChecks {
 public:
  explicit WorkspaceProjectChecks(const WorkspaceProjectSnapshot& snapshot);

  // Every check below, in order.
  void appendAll(std::vector<WorkspaceCompileDiagnostic>& out) const;

  // structure.duplicate_id (the second and later cards of an id), structure.parent_missing,
  // structure.parent_not_folder, structure.parent_folder_invalid, then appendCycles. For a
  // repeated id the later card is the one that parents resolve to.
  void appendStructure(std::vector<WorkspaceCompileDiagnostic>& out) const;
  // One structure.parent_cycle per cycle of parent links (a card that is its own parent
  // included), bound to the card whose parent link closes the cycle; runtime-owned when any card
  // of the cycle is runtime-managed.
  void appendCycles(std::vector<WorkspaceCompileDiagnostic>& out) const;
  // layout.invalid_size unless width and height are finite and above 0; layout.invalid_position
  // when x or y is not finite. A card can get both.
  void appendLayouts(std::vector<WorkspaceCompileDiagnostic>& out) const;
  // Per snap constraint, in the order left, right, top, bottom: constraints.anchor_missing,
  // constraints.side_invalid, constraints.value_invalid (crossOffset or gap not finite;
  // localOffset is not judged).
  void appendConstraints(std::vector<WorkspaceCompileDiagnostic>& out) const;
  // Per group stack of a folder card: group.anchor_missing, then per ordered id
  // group.ordered_id_duplicate (a repeat within the stack) or group.child_mismatch (not a child of
  // the folder). Bound to the folder card.
  void appendGroups(std::vector<WorkspaceCompileDiagnostic>& out) const;
  // quality.table_row_shape, quality.url_malformed per card, then folder.orphan_directory per
  // listed folder whose last path segment names no folder card.
  void appendWarnings(std::vector<WorkspaceCompileDiagnostic>& out) const;

 private:
  const CardRecord* card(const Uuid& id) const;
  std::string_view kind(const CardRecord& card) const;

  const WorkspaceProjectSnapshot& snapshot_;
  std::unordered_map<Uuid, size_t> indexByID_;  // a repeated id maps to its last card
  std::vector<std::string_view> kinds_;         // compileCardKind of each card's payload
  std::unordered_set<Uuid> folderIDs_;          // ids of the cards of kind "folder"
};

}  // namespace zorvik
