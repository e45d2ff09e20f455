#include "workspace_store/card_model/workspace_card_payload.h"

#include <utility>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

namespace {

// Tries the keys in WorkspaceCardType order; true once one was found and decoded into `result`.
template <size_t... I>
bool decodeFirstPresent(const ObjectDecoder& object, std::optional<WorkspaceCardPayload>& result,
                        std::index_sequence<I...>) {
  auto tryCase = [&]<size_t Index>() {
    using Record = std::variant_alternative_t<Index, WorkspaceCardPayload::Value>;
    std::string_view key = rawValue(static_cast<WorkspaceCardType>(Index));
    if (!object.contains(key)) return false;
    result = WorkspaceCardPayload{
        WorkspaceCardPayload::Value(std::in_place_index<Index>, *object.optional<Record>(key))};
    return true;
  };
  return (tryCase.template operator()<I>() || ...);
}

}  // namespace

std::optional<std::string> WorkspaceCardPayload::summary() const {
  return std::visit([](const auto& record) { return record.summary; }, value);
}

WorkspaceCardPayload WorkspaceCardPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  std::optional<WorkspaceCardPayload> result;
  if (!decodeFirstPresent(object, result, std::make_index_sequence<std::variant_size_v<Value>>())) {
    decoder.throwDataCorrupted("Unknown payload type.");
  }
  return std::move(*result);
}

AnyCodableValue WorkspaceCardPayload::encode() const {
  const std::string_view key = rawValue(type());
  return ObjectEncoder()
      .add("type", key)
      .add(key, std::visit([](const auto& record) { return record.encode(); }, value))
      .build();
}

}  // namespace zorvik
