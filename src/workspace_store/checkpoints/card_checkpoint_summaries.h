// summarizeCardCheckpoints: folds a window of mutation checkpoints into one summary per card.
//
// `window` is newest first. `currentHashes` maps the upper-case id of every card on the board now
// to its card hash. The scope is `cardIDs` when that is not empty, and otherwise every card on the
// board plus every card that a diff in the window names; ids compare ignoring case and summaries
// carry them upper-cased. For each card the newest diff sets the last_* fields and every diff
// counts towards mutationCount and the count of its kind; a card in scope that no diff names gets
// zero counts. The result lists cards with a last mutation first, newest first, then the rest;
// ties go by card id ascending. Pure; safe from any thread.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "workspace_store/checkpoints/workspace_project_card_checkpoint_summary.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"

namespace zorvik {

std::vector<WorkspaceProjectCardCheckpointSummary> summarizeCardCheckpoints(
    const std::vector<WorkspaceProjectMutationCheckpoint>& window,
    const std::map<std::string, std::string>& currentHashes,
    const std::vector<std::string>& cardIDs);

}  // namespace zorvik
