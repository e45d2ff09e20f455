// The canonical hashes of a board: one card, and the whole project state.
//
// A card's canonical form (its hash payload) is the JSON object with the keys "id", "parent_id",
// "title", "path", "folder_id", "frame" ({x, y, width, height}), "z_index", "snap_constraints",
// "payload" and "group_stacks"; ids are upper-case UUID text, absent optionals are left out, and
// the card's creation date is deliberately not part of it. The state's form is {"cards": [...],
// "metadata": {...}} with the cards sorted by upper-case id and, of the metadata, only
// "structure_version", "project_id", "resources_folder_name", "background_style" and
// "current_folder_id": saving, panning, sidebars and agent affinity never move the state.
//
// A hash is the lower-case hexadecimal SHA-256 of the compact JSON text of that form, keys sorted
// at every level (the payload's own keys included), so equal content gives equal bytes whatever the
// key order on disk. When the form cannot be encoded (a non-finite number) the hash is the literal
// kHashErrorText, so two such states compare equal. Pure functions; safe from any thread.
#pragma once

#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_record.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

inline constexpr std::string_view kHashErrorText = "hash_error";

// The canonical form of one card.
AnyCodableValue cardHashPayload(const CardRecord& card);

// The canonical form of a whole state. projectStateHash never builds it in one piece; it exists to
// show what the hash covers.
AnyCodableValue stateHashPayload(const WorkspaceProjectSnapshot& snapshot);

std::string cardHash(const CardRecord& card);
std::string projectStateHash(const WorkspaceProjectSnapshot& snapshot);

}  // namespace zorvik
