// Type traits shared by the value encoder and decoder: which C++ types map to which JSON forms,
// how enumerations persist as raw strings, and the type names that decoding errors print.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace zorvik {

class AnyCodableValue;
class ValueDecoder;

// An enumeration persists as its raw strings when it specialises EnumRawValues:
//   template <> struct EnumRawValues<Mode> {
//     static constexpr std::string_view typeName = "Mode";
//     static constexpr std::array table{std::pair{Mode::a, std::string_view("a")}, ...};
//   };
template <class E>
struct EnumRawValues;

template <class E>
concept RawValueEnum = std::is_enum_v<E> && requires {
  EnumRawValues<E>::table;
};

template <RawValueEnum E>
std::string_view rawValue(E value) {
  for (const auto& [candidate, raw] : EnumRawValues<E>::table) {
    if (candidate == value) return raw;
  }
  return {};
}

template <RawValueEnum E>
std::optional<E> enumFromRawValue(std::string_view raw) {
  for (const auto& [candidate, text] : EnumRawValues<E>::table) {
    if (text == raw) return candidate;
  }
  return std::nullopt;
}

// A record decodes with `static T decode(const ValueDecoder&)` and encodes with
// `AnyCodableValue encode() const`.
template <class T>
concept DecodableRecord = requires(const ValueDecoder& decoder) {
  { T::decode(decoder) } -> std::same_as<T>;
};
template <class T>
concept EncodableRecord = requires(const T& record) {
  { record.encode() } -> std::same_as<AnyCodableValue>;
};

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <class T>
struct IsVector : std::false_type {};
template <class T, class A>
struct IsVector<std::vector<T, A>> : std::true_type {};

template <class T>
struct IsStringMap : std::false_type {};
template <class T, class C, class A>
struct IsStringMap<std::map<std::string, T, C, A>> : std::true_type {};

// The demangled name of a record type without the namespace: "WorkspaceCard".
std::string recordTypeName(const char* mangledName);

// The name a decoding error prints for the requested type.
template <class T>
std::string typeNameOf();

}  // namespace zorvik
