// WorkspaceRowItem: one labelled row of a link card, with the kind-specific payload records.
//
// Decoding is tolerant: payloads may sit at top level or inside a `content` object, a bare string
// `value` stands for a key-value payload, and a missing `type` is inferred from the payloads.
// Encoding writes one spelling and adds the row's display text under `value`. Plain values;
// decoding failures throw DecodingError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

// JSON: {"value": string}, required.
struct KeyValuePayload {
  std::string value;

  static KeyValuePayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const KeyValuePayload&) const = default;
};

// JSON: `items` (required); `is_expanded`, then `isExpanded` on decoding (absent is false).
// Encodes `items` and `is_expanded`.
struct ExpandableListPayload {
  std::vector<std::string> items;
  bool isExpanded = false;

  static ExpandableListPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const ExpandableListPayload&) const = default;
};

// JSON: `is_checked`, then `isChecked` on decoding (absent is false). Encodes `is_checked`.
struct TodoPayload {
  bool isChecked = false;

  static TodoPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const TodoPayload&) const = default;
};

// JSON: {"value": integer}, required.
struct RatingPayload {
  int64_t value = 0;

  static RatingPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const RatingPayload&) const = default;
};

// The normalised form of a row kind: trimmed, lower-cased, every '-' replaced by '_'.
std::string normalizeRowItemType(std::string_view type);

struct WorkspaceRowItem {
  std::string label;
  // Normalised kind: "key_value", "expandable_list", "todo" or "rating" (other texts are kept).
  std::string type;
  std::optional<KeyValuePayload> keyValue;
  std::optional<ExpandableListPayload> expandableList;
  std::optional<TodoPayload> todo;
  std::optional<RatingPayload> rating;

  // The display text by kind: list items joined with ", "; "completed" or "open" for a todo;
  // "<n> stars" for a rating; otherwise the key-value text. A missing payload gives "".
  std::string value() const;

  // `label` is required. Payloads absent at top level are taken from a `content` object; a
  // top-level string `value` becomes the key-value payload when none is present. `type` is
  // normalised, or inferred from the first of expandableList, todo, rating, else "key_value".
  static WorkspaceRowItem decode(const ValueDecoder& decoder);
  // Writes label, type, the present payloads and `value` (the display text).
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceRowItem&) const = default;
};

}  // namespace zorvik
