// Helpers shared by the card model tests: decode a record from JSON text, encode one to compact
// JSON text, catch the error of a decoding that must fail.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/decoding_error.h"
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

// The DecodingError that decoding `text` as T throws; fails the test when it decodes.
template <class T>
DecodingError decodingError(std::string_view text) {
  try {
    decodeJSON<T>(text);
  } catch (const DecodingError& error) {
    return error;
  }
  ADD_FAILURE() << "decoded: " << text;
  return DecodingError::dataCorrupted({}, "");
}

}  // namespace zorvik::testing
