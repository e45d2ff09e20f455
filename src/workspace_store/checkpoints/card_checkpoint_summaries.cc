#include "workspace_store/checkpoints/card_checkpoint_summaries.h"

#include <algorithm>

#include "workspace_store/checkpoints/normalized_card_ids.h"

namespace zorvik {
namespace {

void count(WorkspaceProjectCardCheckpointSummary& summary,
           const WorkspaceProjectMutationCheckpoint& checkpoint,
           const WorkspaceProjectMutationCardDiff& diff) {
  if (!summary.lastMutationAt) {
    summary.lastMutationCheckpointID = checkpoint.checkpointID;
    summary.lastMutationCommand = checkpoint.command;
    summary.lastMutationAt = checkpoint.createdAt;
    summary.lastChangeType = diff.changeType;
    summary.lastBeforeHash = diff.beforeHash;
    summary.lastAfterHash = diff.afterHash;
  }
  ++summary.mutationCount;
  switch (diff.changeType) {
    case WorkspaceProjectMutationChangeType::added:
      ++summary.addedCount;
      break;
    case WorkspaceProjectMutationChangeType::removed:
      ++summary.removedCount;
      break;
    case WorkspaceProjectMutationChangeType::updated:
      ++summary.updatedCount;
      break;
  }
}

bool summaryOrder(const WorkspaceProjectCardCheckpointSummary& a,
                  const WorkspaceProjectCardCheckpointSummary& b) {
  if (a.lastMutationAt.has_value() != b.lastMutationAt.has_value()) {
    return a.lastMutationAt.has_value();
  }
  if (a.lastMutationAt && *a.lastMutationAt != *b.lastMutationAt) {
    return *a.lastMutationAt > *b.lastMutationAt;
  }
  return a.cardID < b.cardID;
}

}  // namespace

std::vector<WorkspaceProjectCardCheckpointSummary> summarizeCardCheckpoints(
    const std::vector<WorkspaceProjectMutationCheckpoint>& window,
    const std::map<std::string, std::string>& currentHashes,
    const std::vector<std::string>& cardIDs) {
  // The accumulators of the cards in scope, by upper-case id.
  std::map<std::string, WorkspaceProjectCardCheckpointSummary> scope;
  auto include = [&scope](std::string key) {
    auto [slot, inserted] = scope.try_emplace(key);
    if (inserted) slot->second.cardID = std::move(key);
  };
  if (cardIDs.empty()) {
    for (const auto& [key, hash] : currentHashes) include(key);
    for (const auto& checkpoint : window) {
      for (const auto& diff : checkpoint.cardDiffs) include(caseInsensitiveIDKey(diff.cardID));
    }
  } else {
    for (const std::string& id : cardIDs) include(caseInsensitiveIDKey(id));
  }

  for (const auto& checkpoint : window) {
    for (const auto& diff : checkpoint.cardDiffs) {
      auto found = scope.find(caseInsensitiveIDKey(diff.cardID));
      if (found != scope.end()) count(found->second, checkpoint, diff);
    }
  }

  std::vector<WorkspaceProjectCardCheckpointSummary> summaries;
  summaries.reserve(scope.size());
  for (auto& [key, summary] : scope) {
    if (auto current = currentHashes.find(key); current != currentHashes.end()) {
      summary.presentInCurrentSnapshot = true;
      summary.currentHash = current->second;
    }
    summaries.push_back(std::move(summary));
  }
  std::sort(summaries.begin(), summaries.end(), summaryOrder);
  return summaries;
}

}  // namespace zorvik
