// AnyCodableValue: the dynamic JSON value that carries all tool input and output, JSON schemas,
// examples and card payloads.
//
// A value is one of null, bool, int (64-bit), double, string, array or object. Objects keep unique
// keys sorted by their UTF-8 bytes; insertion order is not kept, so every writer prints keys
// sorted. Values are plain copyable data; concurrent reads of one value are safe, writes need the
// owner's lock.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zorvik {

class AnyCodableValue;

// A JSON object: unique keys, kept sorted by UTF-8 bytes (a flat sorted vector).
class JSONObject {
 public:
  using Entry = std::pair<std::string, AnyCodableValue>;
  using const_iterator = std::vector<Entry>::const_iterator;

  JSONObject();
  JSONObject(std::initializer_list<Entry> entries);
  // Takes entries in any order; for a repeated key the last one wins.
  static JSONObject fromEntries(std::vector<Entry> entries);

  JSONObject(const JSONObject&);
  JSONObject(JSONObject&&) noexcept;
  JSONObject& operator=(const JSONObject&);
  JSONObject& operator=(JSONObject&&) noexcept;
  ~JSONObject();

  // The value under `key`, or nullptr when the key is absent.
  const AnyCodableValue* find(std::string_view key) const;
  AnyCodableValue* find(std::string_view key);
  bool contains(std::string_view key) const;
  // Inserts or replaces the value under `key`; returns a reference to the stored value.
  AnyCodableValue& set(std::string key, AnyCodableValue value);
  // Removes `key`; returns whether it was present.
  bool erase(std::string_view key);

  size_t size() const;
  bool empty() const;
  const_iterator begin() const;
  const_iterator end() const;

  friend bool operator==(const JSONObject& a, const JSONObject& b);

 private:
  std::vector<Entry> entries_;
};

class AnyCodableValue {
 public:
  using Array = std::vector<AnyCodableValue>;
  using Object = JSONObject;
  enum class Kind { null, boolean, integer, number, string, array, object };

  AnyCodableValue() = default;
  AnyCodableValue(std::nullptr_t) {}
  AnyCodableValue(bool value) : storage_(value) {}
  template <std::integral T>
  requires(!std::same_as<T, bool>) AnyCodableValue(T value)
      : storage_(static_cast<int64_t>(value)) {}
  AnyCodableValue(double value) : storage_(value) {}
  AnyCodableValue(const char* value) : storage_(std::string(value)) {}
  AnyCodableValue(std::string_view value) : storage_(std::in_place_type<std::string>, value) {}
  AnyCodableValue(std::string value) : storage_(std::move(value)) {}
  AnyCodableValue(Array value) : storage_(std::move(value)) {}
  AnyCodableValue(Object value) : storage_(std::move(value)) {}

  // A number as a typed record's encoding gives it back: integral values within the 64-bit range
  // become `int`, everything else stays `double`.
  static AnyCodableValue number(double value);

  // Parses JSON text. Text that is not UTF-8 throws DomainError("AnyCodableValue", 1,
  // "Invalid UTF-8 string"); malformed JSON throws DecodingError (data corrupted). Numbers without
  // a fraction, and integral numbers that fit 64 bits, become `int`.
  static AnyCodableValue parse(std::string_view text);

  // Pretty JSON text with sorted keys; nullopt when the value holds a non-finite double.
  std::optional<std::string> jsonString() const;
  // The same without white space.
  std::optional<std::string> compactJSONString() const;

  Kind kind() const { return static_cast<Kind>(storage_.index()); }
  bool isNull() const { return kind() == Kind::null; }
  bool isObject() const { return kind() == Kind::object; }
  bool isArray() const { return kind() == Kind::array; }
  bool isString() const { return kind() == Kind::string; }

  // Typed views: nullptr when the value is of another kind.
  const bool* asBool() const { return std::get_if<bool>(&storage_); }
  const int64_t* asInt() const { return std::get_if<int64_t>(&storage_); }
  const double* asDouble() const { return std::get_if<double>(&storage_); }
  const std::string* asString() const { return std::get_if<std::string>(&storage_); }
  const Array* asArray() const { return std::get_if<Array>(&storage_); }
  Array* asArray() { return std::get_if<Array>(&storage_); }
  const Object* asObject() const { return std::get_if<Object>(&storage_); }
  Object* asObject() { return std::get_if<Object>(&storage_); }
  // An int or a double as a double.
  std::optional<double> numericValue() const;

  // For an object, the member under `key`; nullptr when absent or when this is no object.
  const AnyCodableValue* member(std::string_view key) const;

  friend bool operator==(const AnyCodableValue& a, const AnyCodableValue& b) {
    return a.storage_ == b.storage_;
  }

 private:
  // The alternative order matches Kind.
  std::variant<std::monostate, bool, int64_t, double, std::string, Array, Object> storage_;
};

// JSONObject's inline members need AnyCodableValue complete.
inline bool JSONObject::contains(std::string_view key) const { return find(key) != nullptr; }
inline size_t JSONObject::size() const { return entries_.size(); }
inline bool JSONObject::empty() const { return entries_.empty(); }
inline JSONObject::const_iterator JSONObject::begin() const { return entries_.begin(); }
inline JSONObject::const_iterator JSONObject::end() const { return entries_.end(); }

}  // namespace zorvik
