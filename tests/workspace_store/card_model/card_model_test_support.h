// Helpers shared by the card model tests: decode a record from JSON text, encode one to compact
// JSON text.
#pragma once

#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik::testing {

template <class T>
T decodeJSON(std::string_view text) {
  return decodeValue<T>(AnyCodableValue::parse(text));
}

template <class T>
std::string compactJSON(const T& record) {
  return encodeValue(record).compactJSONString().value_or("<non-finite>");
}

}  // namespace zorvik::testing
