// WorkspaceMutationContractSchemas: the JSON-Schema pieces that several board mutation tools share,
// so that one field means one thing in every tool that takes or answers it: the mutation outcome,
// the checkpoint reference and the persistence check of an answer, and the input shapes of rows,
// sizes, points, placement, html sources and public functions.
//
// Every operation builds a fresh value; nothing is cached, so any thread may call them.
#pragma once

#include <optional>
#include <string_view>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct WorkspaceMutationContractSchemas {
  // The `mutation_outcome` of an answer: status (applied, no_effect, partial, failed),
  // reason_codes, target_card_ids, changed_card_ids, before/after_state_hash (text or null) and
  // card_effects (card_id, changed, change_type, before_hash, after_hash; all required).
  static AnyCodableValue mutationOutcomeSchema();
  // The `project_checkpoint_ref`: status (ok, unavailable), checkpoint (checkpoint_id, command,
  // before_state_hash, after_state_hash, changed_any; or null) and message.
  static AnyCodableValue checkpointRefSchema();
  // The `persistence` check: status, expected/verified/missing_card_ids, message.
  static AnyCodableValue persistenceVerificationSchema();
  // The keys every mutation answer ends with: mutation_outcome, project_checkpoint_ref,
  // error_code (text or null) and message.
  static JSONObject mutationAnswerTail();

  // {"type":[type,"null"]} plus the description when not empty.
  static AnyCodableValue nullable(std::string_view type, std::string_view description = {});
  // An integer schema with inclusive bounds.
  static AnyCodableValue boundedInteger(std::optional<int64_t> minimum,
                                        std::optional<int64_t> maximum,
                                        std::string_view description);
  // An array of card id strings, with minItems when given.
  static AnyCodableValue cardIDList(std::string_view description,
                                    std::optional<int64_t> minItems = std::nullopt);

  // A labelled item row: label, type (key_value, expandable_list, todo, rating) and the nested
  // payload of that kind. Only `label` is required: a missing type follows from the payload.
  static AnyCodableValue rowItemSchema();
  // "remote" or "local".
  static AnyCodableValue itemSourceSchema();
  // Representative image URLs of an item or image card.
  static AnyCodableValue imagesSchema();
  // {width, height}, both required, at least 1.
  static AnyCodableValue sizeSchema(std::string_view description);
  // {x, y}, both required, canvas points.
  static AnyCodableValue pointSchema(std::string_view description);
  // {mode: auto|coordinates, coordinates: {x, y}}.
  static AnyCodableValue placementSchema();
  // A published html operation: id, name, js_function (required), description, aliases,
  // parameters (name and type required; type string|number|integer|boolean).
  static AnyCodableValue publicFunctionSchema();
  // html, css, js, allow_remote_assets, persisted_state: the source of an html card.
  static JSONObject htmlSourceProperties();
  // freeform, horizontal, vertical, grid.
  static AnyCodableValue folderLayoutSchema(std::string_view description);
  // Grid columns, 2 to 5.
  static AnyCodableValue gridColumnsSchema(std::string_view description);
  // Table font size, 9 to 28.
  static AnyCodableValue tableFontSizeSchema();
  // `parent_id`: a folder or group id, or root/board/none for the board root.
  static AnyCodableValue parentIDSchema();
  // `focus`: whether selection and camera move to the result.
  static AnyCodableValue focusSchema();
};

}  // namespace zorvik
