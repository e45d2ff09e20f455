// ObjectEncoder and encodeValue: write typed records as AnyCodableValue.
//
// This is how every typed answer leaves a tool: the result equals what a JSON round trip of the
// record would give, so integral doubles become `int`, UUIDs upper-case text and dates ISO 8601
// text. A record encodes with `AnyCodableValue encode() const`:
//
//   AnyCodableValue encode() const {
//     return ObjectEncoder().add("x", x).add("y", y).build();
//   }
//
// `add` omits an absent optional; `addNullable` writes it as null.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"
#include "foundation/uuid.h"

namespace zorvik {

template <class T>
AnyCodableValue encodeValue(const T& value) {
  if constexpr (std::is_same_v<T, AnyCodableValue>) {
    return value;
  } else if constexpr (std::is_same_v<T, bool>) {
    return AnyCodableValue(value);
  } else if constexpr (std::is_integral_v<T>) {
    return AnyCodableValue(static_cast<int64_t>(value));
  } else if constexpr (std::is_floating_point_v<T>) {
    return AnyCodableValue::number(static_cast<double>(value));
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    return AnyCodableValue(std::string_view(value));
  } else if constexpr (std::is_same_v<T, Uuid>) {
    return AnyCodableValue(value.uppercaseString());
  } else if constexpr (std::is_same_v<T, Date>) {
    return AnyCodableValue(formatISO8601(value));
  } else if constexpr (RawValueEnum<T>) {
    return AnyCodableValue(rawValue(value));
  } else if constexpr (IsOptional<T>::value) {
    return value ? encodeValue(*value) : AnyCodableValue();
  } else if constexpr (IsVector<T>::value) {
    AnyCodableValue::Array array;
    array.reserve(value.size());
    for (const auto& element : value) array.push_back(encodeValue(element));
    return AnyCodableValue(std::move(array));
  } else if constexpr (IsStringMap<T>::value) {
    std::vector<JSONObject::Entry> entries;
    entries.reserve(value.size());
    for (const auto& [key, member] : value) entries.emplace_back(key, encodeValue(member));
    return AnyCodableValue(JSONObject::fromEntries(std::move(entries)));
  } else {
    static_assert(EncodableRecord<T>, "type has no encoding");
    return value.encode();
  }
}

class ObjectEncoder {
 public:
  template <class T>
  ObjectEncoder& add(std::string_view key, const T& value) {
    if constexpr (IsOptional<T>::value) {
      if (!value) return *this;
    }
    entries_.emplace_back(std::string(key), encodeValue(value));
    return *this;
  }

  // Writes an absent optional as JSON null instead of leaving the key out.
  template <class T>
  ObjectEncoder& addNullable(std::string_view key, const std::optional<T>& value) {
    entries_.emplace_back(std::string(key), encodeValue(value));
    return *this;
  }

  AnyCodableValue build() { return AnyCodableValue(JSONObject::fromEntries(std::move(entries_))); }

 private:
  std::vector<JSONObject::Entry> entries_;
};

}  // namespace zorvik
