// FakeBoardEdits: the board changes the stand-in application makes for the mutation commands
// create_cards, edit_cards, delete_cards and resize_cards, on the project's real files.
//
// The document `.zorvik/workspace.json` is read, changed and written back atomically; rich text
// and table cards get content files under `cards/` (`<id>.md`, `<id>.csv`), every other kind lives
// inline in its entry. Arguments the commands' contracts refuse (a missing `cards`, both `edits`
// and `cards`, a resize without a positive size, ...) throw std::invalid_argument before anything
// is written. Per-card problems (an unknown id, an unsupported card type) do not throw: they are
// answered in that card's `results` entry with status "error" and leave the card alone.
//
// Not thread-safe: callers serialise the edits of one project.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik::testing {

struct FakeBoardEditResult {
  // The command's answer without `mutation_outcome` and `project_checkpoint_ref`.
  JSONObject answer;
  std::vector<std::string> targetCardIDs;  // upper-case UUID text, as requested
  int failedCount = 0;                     // `results` entries with status "error"
};

// Whether `command` is one of the four commands above.
bool isFakeBoardEditCommand(std::string_view command);

// Applies one command to the project. Throws std::invalid_argument for refused arguments and
// std::runtime_error when the project's document cannot be read or written.
FakeBoardEditResult applyFakeBoardEdit(const std::filesystem::path& projectURL,
                                       std::string_view command, const AnyCodableValue& arguments);

// What the application answers for one command: the edit of applyFakeBoardEdit bracketed by a
// mutation checkpoint (`.zorvik-control/mutation-checkpoints/`), answered with the edit's fields
// plus `mutation_outcome` and `project_checkpoint_ref` (and `persistence`, `idempotency_key` for
// create_cards and delete_cards). A create_cards call repeating an earlier `idempotency_key` of
// this process replays the earlier answer with `replayed` true and changes nothing. Calls are
// serialised within the process. Throws as applyFakeBoardEdit does, and when the project cannot
// be loaded around the edit.
AnyCodableValue performFakeBoardMutation(const std::filesystem::path& projectURL,
                                         std::string_view command,
                                         const AnyCodableValue& arguments);

}  // namespace zorvik::testing
