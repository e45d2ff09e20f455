// WorkspaceChatPayload: the body of a chat card, with its messages.
//
// Two nestings meet on decoding: messages and isInvisible may sit at top level or inside a `chat`
// object. `messages` is taken from `chat` first, then from top level, else empty; `isInvisible`
// from top level first, then from `chat`. Encoding writes `summary` and a `chat` object with
// `messages` and `isInvisible`. A chat whose isInvisible is true is the runtime's own agent card.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

// `role` and `text`, both required.
struct WorkspaceChatMessage {
  std::string role;
  std::string text;

  static WorkspaceChatMessage decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceChatMessage&) const = default;
};

struct WorkspaceChatPayload {
  std::optional<std::string> summary;
  std::vector<WorkspaceChatMessage> messages;
  std::optional<bool> isInvisible;

  static WorkspaceChatPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceChatPayload&) const = default;
};

}  // namespace zorvik
