#include "workspace_store/checkpoints/workspace_project_mutation_card_diff.h"

#include <map>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/checkpoints/project_state_hash.h"

namespace zorvik {
namespace {

// Card hashes by upper-case id; of duplicate ids the last card counts.
std::map<std::string, std::string> cardHashesByID(const WorkspaceProjectSnapshot& snapshot) {
  std::map<std::string, std::string> hashes;
  for (const CardRecord& card : snapshot.cards) {
    hashes.insert_or_assign(card.id.uppercaseString(), cardHash(card));
  }
  return hashes;
}

}  // namespace

std::vector<WorkspaceProjectMutationCardDiff> WorkspaceProjectMutationCardDiff::between(
    const WorkspaceProjectSnapshot& before, const WorkspaceProjectSnapshot& after) {
  const auto beforeHashes = cardHashesByID(before);
  const auto afterHashes = cardHashesByID(after);
  std::vector<WorkspaceProjectMutationCardDiff> diffs;
  // Both maps are sorted, so one merge walk visits the sorted union of ids.
  auto old = beforeHashes.begin();
  auto now = afterHashes.begin();
  while (old != beforeHashes.end() || now != afterHashes.end()) {
    if (now == afterHashes.end() || (old != beforeHashes.end() && old->first < now->first)) {
      diffs.push_back({old->first, WorkspaceProjectMutationChangeType::removed, old->second, {}});
      ++old;
    } else if (old == beforeHashes.end() || now->first < old->first) {
      diffs.push_back({now->first, WorkspaceProjectMutationChangeType::added, {}, now->second});
      ++now;
    } else {
      if (old->second != now->second) {
        diffs.push_back(
            {old->first, WorkspaceProjectMutationChangeType::updated, old->second, now->second});
      }
      ++old;
      ++now;
    }
  }
  return diffs;
}

WorkspaceProjectMutationCardDiff WorkspaceProjectMutationCardDiff::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectMutationCardDiff{
      .cardID = object.required<std::string>("card_id"),
      .changeType = object.required<WorkspaceProjectMutationChangeType>("change_type"),
      .beforeHash = object.optional<std::string>("before_hash"),
      .afterHash = object.optional<std::string>("after_hash"),
  };
}

AnyCodableValue WorkspaceProjectMutationCardDiff::encode() const {
  return ObjectEncoder()
      .add("card_id", cardID)
      .add("change_type", changeType)
      .add("before_hash", beforeHash)
      .add("after_hash", afterHash)
      .build();
}

}  // namespace zorvik
