// How the compiler reads a card's raw runtime payload: its kind word and whether the running
// application manages the card itself. Pure functions of the payload; thread-safe.
#pragma once

#include <string_view>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

// The first key present, in the order link, image, chat, richText, html, folder, table, gives
// "link", "image", "chat", "rich_text", "html", "folder", "table"; anything else, and a payload
// that is no object, is "unknown". Browser and video payloads are deliberately "unknown", so they
// pass every kind-dependent check unseen.
std::string_view compileCardKind(const AnyCodableValue& payload);

// A runtime-managed card is an invisible chat: `isInvisible` is true in the payload's `chat`
// object or at its top level, and the payload's kind is "chat". A payload object without a `type`
// key is judged on `isInvisible` alone. Diagnostics of such cards belong to the runtime and are
// only to be reported.
bool isRuntimeManagedPayload(const AnyCodableValue& payload);

}  // namespace zorvik
