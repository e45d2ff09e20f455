#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"

#include <algorithm>
#include <chrono>
#include <map>

#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "foundation/uuid.h"
#include "workspace_store/checkpoints/card_checkpoint_summaries.h"
#include "workspace_store/checkpoints/checkpoint_folder.h"
#include "workspace_store/checkpoints/normalized_card_ids.h"
#include "workspace_store/checkpoints/project_state_hash.h"

namespace zorvik {
namespace {

// The standardised project path with its symbolic links resolved, as far as they exist.
std::filesystem::path resolvedProjectPath(const std::filesystem::path& projectURL) {
  const std::filesystem::path standardized = standardizedPath(projectURL);
  std::error_code error;
  std::filesystem::path resolved = std::filesystem::weakly_canonical(standardized, error);
  return error ? standardized : standardizedPath(resolved);
}

Date wholeSecond(Date date) { return std::chrono::floor<std::chrono::seconds>(date); }

std::string newCheckpointID() { return Uuid::random().lowercaseString(); }

std::optional<std::string> trimmedOrNil(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  std::string trimmed = trimWhitespaceAndNewlines(*text);
  if (trimmed.empty()) return std::nullopt;
  return trimmed;
}

// Newest first; ties by checkpoint id, higher first.
template <class Checkpoint>
void sortNewestFirst(std::vector<Checkpoint>& checkpoints) {
  std::sort(checkpoints.begin(), checkpoints.end(), [](const Checkpoint& a, const Checkpoint& b) {
    if (a.createdAt != b.createdAt) return a.createdAt > b.createdAt;
    return a.checkpointID > b.checkpointID;
  });
}

template <class Record>
void keepFirst(std::vector<Record>& records, int limit) {
  records.resize(std::min(records.size(), static_cast<size_t>(std::max(limit, 0))));
}

}  // namespace

WorkspaceProjectMutationCheckpointStore::WorkspaceProjectMutationCheckpointStore(
    int maxEntriesPerProject, WorkspaceProjectSnapshotStore snapshotStore)
    : maxEntriesPerProject_(std::max(maxEntriesPerProject, 1)), snapshotStore_(snapshotStore) {}

std::string WorkspaceProjectMutationCheckpointStore::stateHash(
    const WorkspaceProjectSnapshot& snapshot) const {
  return projectStateHash(snapshot);
}

std::string WorkspaceProjectMutationCheckpointStore::cardHash(const CardRecord& card) const {
  return zorvik::cardHash(card);
}

CaptureContext WorkspaceProjectMutationCheckpointStore::beginCapture(
    const std::filesystem::path& projectURL, std::string command,
    const std::vector<std::string>& targetCardIDs) const {
  std::filesystem::path root = resolvedProjectPath(projectURL);
  WorkspaceProjectSnapshot before = snapshotStore_.load(root);
  std::string beforeStateHash = projectStateHash(before);
  return CaptureContext{
      .projectURL = std::move(root),
      .command = std::move(command),
      .targetCardIDs = normalizedCardIDs(targetCardIDs),
      .beforeSnapshot = std::move(before),
      .beforeStateHash = std::move(beforeStateHash),
      .startedAt = currentDate(),
  };
}

WorkspaceProjectMutationCheckpoint WorkspaceProjectMutationCheckpointStore::finishCapture(
    const CaptureContext& context) const {
  const WorkspaceProjectSnapshot after = snapshotStore_.load(context.projectURL);
  WorkspaceProjectMutationCheckpoint checkpoint{
      .checkpointID = newCheckpointID(),
      .command = context.command,
      .projectPath = context.projectURL.string(),
      .targetCardIDs = context.targetCardIDs,
      .beforeStateHash = context.beforeStateHash,
      .afterStateHash = projectStateHash(after),
      .cardDiffs = WorkspaceProjectMutationCardDiff::between(context.beforeSnapshot, after),
  };
  for (const auto& diff : checkpoint.cardDiffs) {
    checkpoint.changedCardIDs.push_back(diff.cardID);
    switch (diff.changeType) {
      case WorkspaceProjectMutationChangeType::added:
        ++checkpoint.addedCount;
        break;
      case WorkspaceProjectMutationChangeType::removed:
        ++checkpoint.removedCount;
        break;
      case WorkspaceProjectMutationChangeType::updated:
        ++checkpoint.updatedCount;
        break;
    }
  }
  checkpoint.changedAny = !checkpoint.cardDiffs.empty();

  const Date now = currentDate();
  checkpoint.createdAt = wholeSecond(now);
  const CheckpointFolder folder(context.projectURL / kMutationCheckpointsFolder);
  folder.write(CheckpointFolder::fileName(now, checkpoint.checkpointID), checkpoint.encode());
  folder.prune(maxEntriesPerProject_);
  return checkpoint;
}

std::vector<WorkspaceProjectMutationCheckpoint>
WorkspaceProjectMutationCheckpointStore::allMutationCheckpoints(
    const std::filesystem::path& projectURL) const {
  const CheckpointFolder folder(resolvedProjectPath(projectURL) / kMutationCheckpointsFolder);
  auto checkpoints = folder.readAll<WorkspaceProjectMutationCheckpoint>();
  sortNewestFirst(checkpoints);
  return checkpoints;
}

std::vector<WorkspaceProjectMutationCheckpoint>
WorkspaceProjectMutationCheckpointStore::recentCheckpoints(const std::filesystem::path& projectURL,
                                                           int limit) const {
  if (limit < 1) return {};
  auto checkpoints = allMutationCheckpoints(projectURL);
  keepFirst(checkpoints, limit);
  return checkpoints;
}

std::optional<WorkspaceProjectMutationCheckpoint>
WorkspaceProjectMutationCheckpointStore::mutationCheckpoint(const std::filesystem::path& projectURL,
                                                            std::string_view checkpointID) const {
  const std::string wanted = caseInsensitiveIDKey(trimWhitespaceAndNewlines(checkpointID));
  if (wanted.empty()) return std::nullopt;
  for (auto& checkpoint : allMutationCheckpoints(projectURL)) {
    if (caseInsensitiveIDKey(checkpoint.checkpointID) == wanted) return std::move(checkpoint);
  }
  return std::nullopt;
}

WorkspaceProjectStateCheckpoint WorkspaceProjectMutationCheckpointStore::captureProjectCheckpoint(
    const std::filesystem::path& projectURL, WorkspaceProjectCheckpointTrigger trigger,
    std::optional<std::string> reason, bool includeSnapshot) const {
  const std::filesystem::path root = resolvedProjectPath(projectURL);
  WorkspaceProjectSnapshot snapshot = snapshotStore_.load(root);
  const Date now = currentDate();
  WorkspaceProjectStateCheckpoint checkpoint{
      .checkpointID = newCheckpointID(),
      .createdAt = wholeSecond(now),
      .projectPath = root.string(),
      .trigger = trigger,
      .reason = trimmedOrNil(reason),
      .stateHash = projectStateHash(snapshot),
      .projectFingerprint = snapshot.projectFingerprint,
      .cardCount = static_cast<int>(snapshot.cards.size()),
      .folderCount = static_cast<int>(snapshot.folders.size()),
      .checkedFiles = snapshot.checkedFiles,
  };
  const std::string fileName = CheckpointFolder::fileName(now, checkpoint.checkpointID);

  if (includeSnapshot) {
    const ProjectCheckpointSnapshotArchive archive{
        .checkpointID = checkpoint.checkpointID,
        .createdAt = checkpoint.createdAt,
        .trigger = checkpoint.trigger,
        .reason = checkpoint.reason,
        .stateHash = checkpoint.stateHash,
        .projectFingerprint = checkpoint.projectFingerprint,
        .metadata = std::move(snapshot.metadata),
        .folders = std::move(snapshot.folders),
        .cards = std::move(snapshot.cards),
    };
    const CheckpointFolder archives(root / kSnapshotArchivesFolder);
    archives.write(fileName, archive.encode());
    archives.prune(maxEntriesPerProject_);
    checkpoint.snapshotPath = std::string(kSnapshotArchivesFolder) + "/" + fileName;
  }

  const CheckpointFolder entries(root / kStateCheckpointsFolder);
  entries.write(fileName, checkpoint.encode());
  entries.prune(maxEntriesPerProject_);
  return checkpoint;
}

std::optional<WorkspaceProjectStateCheckpoint>
WorkspaceProjectMutationCheckpointStore::capturePeriodicCheckpointIfDue(
    const std::filesystem::path& projectURL, double intervalSeconds,
    std::optional<std::string> reason, bool includeSnapshot, Date now) const {
  const auto latest = recentProjectCheckpoints(
      projectURL, 1, std::set{WorkspaceProjectCheckpointTrigger::periodic});
  if (!latest.empty()) {
    // Written so that NaN, like anything below a second, acts as one second.
    const double interval = intervalSeconds >= 1.0 ? intervalSeconds : 1.0;
    const double elapsed = std::chrono::duration<double>(now - latest.front().createdAt).count();
    if (elapsed < interval) return std::nullopt;
  }
  return captureProjectCheckpoint(projectURL, WorkspaceProjectCheckpointTrigger::periodic,
                                  std::move(reason), includeSnapshot);
}

std::vector<WorkspaceProjectStateCheckpoint>
WorkspaceProjectMutationCheckpointStore::recentProjectCheckpoints(
    const std::filesystem::path& projectURL, int limit,
    const std::optional<std::set<WorkspaceProjectCheckpointTrigger>>& triggers) const {
  if (limit < 1) return {};
  const CheckpointFolder folder(resolvedProjectPath(projectURL) / kStateCheckpointsFolder);
  auto checkpoints = folder.readAll<WorkspaceProjectStateCheckpoint>();
  if (triggers && !triggers->empty()) {
    std::erase_if(checkpoints,
                  [&](const auto& checkpoint) { return !triggers->contains(checkpoint.trigger); });
  }
  sortNewestFirst(checkpoints);
  keepFirst(checkpoints, limit);
  return checkpoints;
}

std::optional<ProjectCheckpointSnapshotArchive>
WorkspaceProjectMutationCheckpointStore::snapshotArchive(
    const std::filesystem::path& projectURL,
    const WorkspaceProjectStateCheckpoint& checkpoint) const {
  if (!checkpoint.snapshotPath) return std::nullopt;
  const std::filesystem::path root = resolvedProjectPath(projectURL);
  const std::filesystem::path folder = root / kSnapshotArchivesFolder;
  const std::filesystem::path file = standardizedPath(root / *checkpoint.snapshotPath);
  if (file == folder || !isSameOrBelow(file, folder)) return std::nullopt;
  // A symbolic link inside the folder must not lead elsewhere either.
  std::error_code error;
  const auto resolvedFile = std::filesystem::weakly_canonical(file, error);
  const auto resolvedFolder = std::filesystem::weakly_canonical(folder, error);
  if (error || !isSameOrBelow(resolvedFile, resolvedFolder)) return std::nullopt;

  std::optional<AnyCodableValue> value = CheckpointFolder::readJSON(file);
  if (!value) return std::nullopt;
  try {
    return decodeValue<ProjectCheckpointSnapshotArchive>(*value);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::vector<WorkspaceProjectMutationCheckpointSummary>
WorkspaceProjectMutationCheckpointStore::recentMutationCheckpointSummaries(
    const std::filesystem::path& projectURL, int limit,
    const std::optional<std::vector<std::string>>& commands) const {
  if (limit < 1) return {};
  std::set<std::string> wanted;
  for (const std::string& command : commands.value_or(std::vector<std::string>{})) {
    std::string key = lowercased(trimWhitespaceAndNewlines(command));
    if (!key.empty()) wanted.insert(std::move(key));
  }
  std::vector<WorkspaceProjectMutationCheckpointSummary> summaries;
  for (const auto& checkpoint : allMutationCheckpoints(projectURL)) {
    if (static_cast<int>(summaries.size()) == limit) break;
    if (!wanted.empty() &&
        !wanted.contains(lowercased(trimWhitespaceAndNewlines(checkpoint.command)))) {
      continue;
    }
    summaries.push_back(WorkspaceProjectMutationCheckpointSummary::of(checkpoint));
  }
  return summaries;
}

std::vector<WorkspaceProjectCardCheckpointSummary>
WorkspaceProjectMutationCheckpointStore::cardCheckpointSummaries(
    const std::filesystem::path& projectURL, int mutationWindow,
    const std::vector<std::string>& cardIDs) const {
  const std::filesystem::path root = resolvedProjectPath(projectURL);
  const auto window = recentCheckpoints(root, std::max(mutationWindow, 1));
  const WorkspaceProjectSnapshot snapshot = snapshotStore_.load(root);
  std::map<std::string, std::string> currentHashes;
  for (const CardRecord& card : snapshot.cards) {
    currentHashes.insert_or_assign(card.id.uppercaseString(), zorvik::cardHash(card));
  }
  return summarizeCardCheckpoints(window, currentHashes, normalizedCardIDs(cardIDs));
}

WorkspaceProjectCheckpointDigest WorkspaceProjectMutationCheckpointStore::checkpointDigest(
    const std::filesystem::path& projectURL, int stateLimit, int mutationLimit,
    int mutationWindowForCards, const std::vector<std::string>& cardIDs,
    const std::optional<std::set<WorkspaceProjectCheckpointTrigger>>& triggers) const {
  const std::filesystem::path root = resolvedProjectPath(projectURL);
  WorkspaceProjectCheckpointDigest digest{
      .projectPath = root.string(),
      .recentProjectCheckpoints = recentProjectCheckpoints(root, std::max(stateLimit, 1), triggers),
      .recentMutationCheckpoints =
          recentMutationCheckpointSummaries(root, std::max(mutationLimit, 1)),
      .cardCheckpointSummaries =
          cardCheckpointSummaries(root, std::max(mutationWindowForCards, 1), cardIDs),
      .generatedAt = wholeSecond(currentDate()),
  };
  if (!digest.recentProjectCheckpoints.empty()) {
    digest.latestProjectCheckpoint = digest.recentProjectCheckpoints.front();
  }
  return digest;
}

}  // namespace zorvik
