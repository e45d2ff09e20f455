// WorkspaceProjectMutationCheckpointStore: the checkpoints of a project folder. It hashes board
// states, brackets mutations with beginCapture/finishCapture and persists what changed, samples the
// project's state now and then (with an optional full archive of the board), and reads all of it
// back, down to a bounded digest for planners.
//
// Files, relative to the project root, one record a file named "{ms}-{checkpointID}.json" (see
// CheckpointFolder), each folder pruned on its own to maxEntriesPerProject files after every write:
//   .zorvik-control/mutation-checkpoints/    WorkspaceProjectMutationCheckpoint
//   .zorvik-control/checkpoints/entries/     WorkspaceProjectStateCheckpoint
//   .zorvik-control/checkpoints/snapshots/   ProjectCheckpointSnapshotArchive
// Checkpoint ids are new lower-case UUIDs. Created-at dates are the time of capture to the whole
// second, the precision the files keep, so a returned record equals what readers later decode;
// file names carry the milliseconds. Readers order by created-at newest first, ties by checkpoint
// id, higher first.
//
// Failures: loading the project (WorkspaceProjectSnapshotError or a filesystem error) and writing
// the files (std::filesystem::filesystem_error, std::system_error) throw to the caller of a
// capture; each file is written atomically, so nothing half-written remains, though an archive may
// stay behind when its entry then fails. Pruning never fails a capture. Readers skip files that
// cannot be read or decoded and give empty lists for missing folders; only the card summaries,
// which load the project, can throw.
//
// Thread safety: the store holds only its settings; every member is const and may run from any
// thread. No lock guards the folders: concurrent writers, even in other processes, are kept apart
// by unique names and atomic renames, and readers see whole files only.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/iso8601_date.h"
#include "workspace_store/checkpoints/capture_context.h"
#include "workspace_store/checkpoints/project_checkpoint_snapshot_archive.h"
#include "workspace_store/checkpoints/workspace_project_card_checkpoint_summary.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_digest.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_trigger.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_summary.h"
#include "workspace_store/checkpoints/workspace_project_state_checkpoint.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {

class WorkspaceProjectMutationCheckpointStore {
 public:
  // What the agent side keeps per project and folder.
  static constexpr int kDefaultMaxEntriesPerProject = 120;

  static constexpr std::string_view kMutationCheckpointsFolder =
      ".zorvik-control/mutation-checkpoints";
  static constexpr std::string_view kStateCheckpointsFolder = ".zorvik-control/checkpoints/entries";
  static constexpr std::string_view kSnapshotArchivesFolder =
      ".zorvik-control/checkpoints/snapshots";

  // A maxEntriesPerProject below 1 becomes 1.
  explicit WorkspaceProjectMutationCheckpointStore(
      int maxEntriesPerProject = kDefaultMaxEntriesPerProject,
      WorkspaceProjectSnapshotStore snapshotStore = {});

  int maxEntriesPerProject() const { return maxEntriesPerProject_; }

  // The state hash and card hash of project_state_hash.h.
  std::string stateHash(const WorkspaceProjectSnapshot& snapshot) const;
  std::string cardHash(const CardRecord& card) const;

  // --- Mutation checkpoints ---

  // Resolves the project path (standardised, symbolic links resolved), loads the project (throws
  // on failure), normalises the target ids (normalizedCardIDs) and notes the state hash and time.
  CaptureContext beginCapture(const std::filesystem::path& projectURL, std::string command,
                              const std::vector<std::string>& targetCardIDs) const;

  // Loads the project again, diffs it against the context's snapshot, persists the checkpoint and
  // prunes. Throws when the load or the write fails; a failed load writes nothing.
  WorkspaceProjectMutationCheckpoint finishCapture(const CaptureContext& context) const;

  // Every readable mutation checkpoint of the project, newest first.
  std::vector<WorkspaceProjectMutationCheckpoint> allMutationCheckpoints(
      const std::filesystem::path& projectURL) const;
  // The first `limit` of allMutationCheckpoints; a limit below 1 gives none.
  std::vector<WorkspaceProjectMutationCheckpoint> recentCheckpoints(
      const std::filesystem::path& projectURL, int limit) const;
  // The checkpoint with this id (trimmed, compared ignoring case), or nullopt.
  std::optional<WorkspaceProjectMutationCheckpoint> mutationCheckpoint(
      const std::filesystem::path& projectURL, std::string_view checkpointID) const;

  // --- Project state checkpoints ---

  // Loads the project (throws on failure), writes the archive first when includeSnapshot is set,
  // then the entry, pruning each folder. `reason` is trimmed; blank becomes absent.
  WorkspaceProjectStateCheckpoint captureProjectCheckpoint(
      const std::filesystem::path& projectURL, WorkspaceProjectCheckpointTrigger trigger,
      std::optional<std::string> reason, bool includeSnapshot) const;

  // Captures with trigger periodic unless the newest periodic checkpoint is younger than
  // intervalSeconds (at least 1.0) at `now`; then gives nullopt. The first call always captures.
  std::optional<WorkspaceProjectStateCheckpoint> capturePeriodicCheckpointIfDue(
      const std::filesystem::path& projectURL, double intervalSeconds,
      std::optional<std::string> reason, bool includeSnapshot, Date now) const;

  // The newest `limit` readable state checkpoints (a limit below 1 gives none), only those whose
  // trigger is in `triggers` when that is given and not empty.
  std::vector<WorkspaceProjectStateCheckpoint> recentProjectCheckpoints(
      const std::filesystem::path& projectURL, int limit,
      const std::optional<std::set<WorkspaceProjectCheckpointTrigger>>& triggers = {}) const;

  // The archive a state checkpoint names, or nullopt when it names none, when the archive has been
  // pruned or cannot be read or decoded, or when snapshot_path leads outside the archive folder.
  std::optional<ProjectCheckpointSnapshotArchive> snapshotArchive(
      const std::filesystem::path& projectURL,
      const WorkspaceProjectStateCheckpoint& checkpoint) const;

  // --- Digests ---

  // The newest `limit` mutation checkpoints without their diffs (a limit below 1 gives none), only
  // those whose command is in `commands` when that holds a non-blank command; commands compare
  // trimmed and lower-cased.
  std::vector<WorkspaceProjectMutationCheckpointSummary> recentMutationCheckpointSummaries(
      const std::filesystem::path& projectURL, int limit,
      const std::optional<std::vector<std::string>>& commands = {}) const;

  // What the newest `mutationWindow` (at least 1) mutation checkpoints did to each card in scope
  // (see summarizeCardCheckpoints); `cardIDs` are normalised first. Loads the project for the
  // current card hashes and throws when that fails.
  std::vector<WorkspaceProjectCardCheckpointSummary> cardCheckpointSummaries(
      const std::filesystem::path& projectURL, int mutationWindow,
      const std::vector<std::string>& cardIDs = {}) const;

  // The three lists above for the resolved project path, each limit raised to at least 1, with the
  // newest state checkpoint as the latest one and now as generated_at. Throws only when the card
  // summaries do.
  WorkspaceProjectCheckpointDigest checkpointDigest(
      const std::filesystem::path& projectURL, int stateLimit, int mutationLimit,
      int mutationWindowForCards, const std::vector<std::string>& cardIDs = {},
      const std::optional<std::set<WorkspaceProjectCheckpointTrigger>>& triggers = {}) const;

 private:
  int maxEntriesPerProject_;
  WorkspaceProjectSnapshotStore snapshotStore_;
};

}  // namespace zorvik
