// ValueDecoder and ObjectDecoder: read typed records out of an AnyCodableValue, tracking the coding
// path so that a failure throws a DecodingError that says where and why.
//
// Supported types: AnyCodableValue (taken as is, null included), bool, integers, double,
// std::string, Uuid, Date (ISO 8601 text), enumerations with EnumRawValues, std::optional,
// std::vector, std::map<std::string, T>, and records with `static T decode(const ValueDecoder&)`.
// Errors name a record by its C++ name, or by its `static constexpr std::string_view
// kCodingTypeName` when it has one.
// Integers accept only integral numbers in range; doubles accept any number.
//
// Decoders are views: they borrow the value and their parents' path, and are valid only during the
// decode call that made them. A record decoder reads like this:
//
//   static Point decode(const ValueDecoder& decoder) {
//     auto object = decoder.object();
//     return {object.required<double>("x"), object.required<double>("y")};
//   }
#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"
#include "foundation/json/decoding_error.h"
#include "foundation/parallel_for.h"
#include "foundation/uuid.h"

namespace zorvik {

class ObjectDecoder;

// One step of a coding path, linked to its parent; materialised only when an error is thrown.
struct CodingPathNode {
  const CodingPathNode* parent = nullptr;
  std::string_view key;
  int index = -1;  // >= 0 for an array element
  bool isRoot = true;

  CodingPath materialise() const;
};

class ValueDecoder {
 public:
  explicit ValueDecoder(const AnyCodableValue& value) : value_(value) {}
  ValueDecoder(const AnyCodableValue& value, CodingPathNode node) : value_(value), node_(node) {}

  const AnyCodableValue& value() const { return value_; }
  CodingPath codingPath() const { return node_.materialise(); }

  template <class T>
  T decode() const;

  // The value as an object; a type mismatch when it is none.
  ObjectDecoder object() const;
  // The value as an array; a type mismatch when it is none.
  const AnyCodableValue::Array& array() const;
  // A decoder for element `index` of an array value.
  ValueDecoder element(const AnyCodableValue& child, int index) const {
    return ValueDecoder(child, CodingPathNode{&node_, {}, index, false});
  }

  [[noreturn]] void throwTypeMismatch(const std::string& typeName) const;
  [[noreturn]] void throwValueNotFound(const std::string& typeName) const;
  [[noreturn]] void throwDataCorrupted(const std::string& debugDescription) const;

 private:
  friend class ObjectDecoder;

  bool decodeBool() const;
  int64_t decodeInteger(const std::string& typeName, int64_t min, int64_t max) const;
  double decodeDouble() const;
  const std::string& decodeString() const;
  Uuid decodeUuid() const;
  Date decodeDate() const;

  template <RawValueEnum E>
  E decodeEnum() const {
    const std::string& raw = decodeString();
    if (auto value = enumFromRawValue<E>(raw)) return *value;
    throwDataCorrupted("Cannot initialize " + std::string(EnumRawValues<E>::typeName) +
                       " from invalid String value " + raw);
  }

  // Long arrays of records are decoded on several threads; a failure names the first element
  // that fails, as a plain loop would.
  template <class Element>
  std::vector<Element> decodeArray() const {
    static constexpr size_t kParallelMinimum = 1024;
    const auto& elements = array();
    std::vector<Element> result;
    if constexpr (DecodableRecord<Element> && std::is_default_constructible_v<Element>) {
      if (elements.size() >= kParallelMinimum) {
        result.resize(elements.size());
        parallelFor(
            elements.size(),
            [&](size_t i) {
              result[i] = element(elements[i], static_cast<int>(i)).template decode<Element>();
            },
            kParallelMinimum / 2);
        return result;
      }
    }
    result.reserve(elements.size());
    for (size_t i = 0; i < elements.size(); ++i) {
      if constexpr (std::is_same_v<Element, std::string>) {
        // Strings are most of a table; a string element needs no decoder of its own.
        if (const std::string* text = elements[i].asString()) {
          result.push_back(*text);
          continue;
        }
      }
      result.push_back(element(elements[i], static_cast<int>(i)).template decode<Element>());
    }
    return result;
  }

  const AnyCodableValue& value_;
  CodingPathNode node_;
};

// The members of an object value.
class ObjectDecoder {
 public:
  ObjectDecoder(const JSONObject& object, CodingPathNode node) : object_(object), node_(node) {}

  // The member under `key`: absent is keyNotFound; null is valueNotFound unless T is
  // AnyCodableValue or optional.
  template <class T>
  T required(std::string_view key) const {
    const AnyCodableValue* member = object_.find(key);
    if (!member) throwKeyNotFound(key);
    return child(*member, key).template decode<T>();
  }

  // The member under `key`; absent and null both give nullopt.
  template <class T>
  std::optional<T> optional(std::string_view key) const {
    const AnyCodableValue* member = object_.find(key);
    if (!member || member->isNull()) return std::nullopt;
    return child(*member, key).template decode<T>();
  }

  // The member under `key`, or `fallback` when absent or null.
  template <class T>
  T value(std::string_view key, T fallback) const {
    auto decoded = optional<T>(key);
    return decoded ? std::move(*decoded) : std::move(fallback);
  }

  // The first of several spellings that is present and not null.
  template <class T>
  std::optional<T> optionalAny(std::initializer_list<std::string_view> keys) const {
    for (std::string_view key : keys) {
      const AnyCodableValue* member = object_.find(key);
      if (member && !member->isNull()) return child(*member, key).template decode<T>();
    }
    return std::nullopt;
  }

  // As optionalAny, but absence is keyNotFound for the first spelling.
  template <class T>
  T requiredAny(std::initializer_list<std::string_view> keys) const {
    if (auto decoded = optionalAny<T>(keys)) return std::move(*decoded);
    std::string_view first = *keys.begin();
    const AnyCodableValue* member = object_.find(first);
    if (!member) throwKeyNotFound(first);
    return child(*member, first).template decode<T>();
  }

  // Present and not null.
  bool contains(std::string_view key) const {
    const AnyCodableValue* member = object_.find(key);
    return member && !member->isNull();
  }
  const AnyCodableValue* raw(std::string_view key) const { return object_.find(key); }
  const JSONObject& members() const { return object_; }
  CodingPath codingPath() const { return node_.materialise(); }

  // A decoder for the member under `key`, for nested reading; the key must be present.
  ValueDecoder nested(const AnyCodableValue& member, std::string_view key) const {
    return child(member, key);
  }

  [[noreturn]] void throwKeyNotFound(std::string_view key) const;
  [[noreturn]] void throwDataCorrupted(std::string_view key, const std::string& debug) const;

 private:
  ValueDecoder child(const AnyCodableValue& member, std::string_view key) const {
    return ValueDecoder(member, CodingPathNode{&node_, key, -1, false});
  }

  const JSONObject& object_;
  CodingPathNode node_;
};

template <class T>
T ValueDecoder::decode() const {
  if constexpr (std::is_same_v<T, AnyCodableValue>) {
    return value_;
  } else if constexpr (IsOptional<T>::value) {
    if (value_.isNull()) return std::nullopt;
    return decode<typename T::value_type>();
  } else {
    if (value_.isNull()) throwValueNotFound(typeNameOf<T>());
    if constexpr (std::is_same_v<T, bool>) {
      return decodeBool();
    } else if constexpr (std::is_integral_v<T>) {
      return static_cast<T>(decodeInteger(typeNameOf<T>(), std::numeric_limits<T>::min(),
                                          std::numeric_limits<T>::max()));
    } else if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(decodeDouble());
    } else if constexpr (std::is_same_v<T, std::string>) {
      return decodeString();
    } else if constexpr (std::is_same_v<T, Uuid>) {
      return decodeUuid();
    } else if constexpr (std::is_same_v<T, Date>) {
      return decodeDate();
    } else if constexpr (RawValueEnum<T>) {
      return decodeEnum<T>();
    } else if constexpr (IsVector<T>::value) {
      return decodeArray<typename T::value_type>();
    } else if constexpr (IsStringMap<T>::value) {
      ObjectDecoder members = object();
      T result;
      for (const auto& [key, member] : members.members()) {
        result.emplace(key, members.nested(member, key).template decode<typename T::mapped_type>());
      }
      return result;
    } else {
      static_assert(DecodableRecord<T>, "type has no decoding");
      return T::decode(*this);
    }
  }
}

// Decodes a whole value as T from the root.
template <class T>
T decodeValue(const AnyCodableValue& value) {
  return ValueDecoder(value).decode<T>();
}

template <class T>
std::string typeNameOf() {
  if constexpr (std::is_same_v<T, bool>) {
    return "Bool";
  } else if constexpr (std::is_same_v<T, int> || std::is_same_v<T, int64_t>) {
    return "Int";
  } else if constexpr (std::is_integral_v<T>) {
    return std::is_signed_v<T> ? "Int" + std::to_string(sizeof(T) * 8)
                               : "UInt" + std::to_string(sizeof(T) * 8);
  } else if constexpr (std::is_floating_point_v<T>) {
    return "Double";
  } else if constexpr (std::is_same_v<T, std::string>) {
    return "String";
  } else if constexpr (std::is_same_v<T, Uuid>) {
    return "UUID";
  } else if constexpr (std::is_same_v<T, Date>) {
    return "Date";
  } else if constexpr (std::is_same_v<T, AnyCodableValue>) {
    return "AnyCodableValue";
  } else if constexpr (RawValueEnum<T>) {
    return std::string(EnumRawValues<T>::typeName);
  } else if constexpr (IsOptional<T>::value) {
    return "Optional<" + typeNameOf<typename T::value_type>() + ">";
  } else if constexpr (IsVector<T>::value) {
    return "Array<" + typeNameOf<typename T::value_type>() + ">";
  } else if constexpr (IsStringMap<T>::value) {
    return "Dictionary<String, " + typeNameOf<typename T::mapped_type>() + ">";
  } else if constexpr (requires { T::kCodingTypeName; }) {
    return std::string(T::kCodingTypeName);  // a record that stands in for another type
  } else {
    return recordTypeName(typeid(T).name());
  }
}

}  // namespace zorvik
