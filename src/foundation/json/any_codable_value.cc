#include "foundation/json/any_codable_value.h"

#include <algorithm>
#include <cmath>

#include "foundation/json/json_writer.h"

namespace zorvik {
namespace {

bool keyLess(const JSONObject::Entry& entry, std::string_view key) { return entry.first < key; }

}  // namespace

JSONObject::JSONObject() = default;
JSONObject::JSONObject(const JSONObject&) = default;
JSONObject::JSONObject(JSONObject&&) noexcept = default;
JSONObject& JSONObject::operator=(const JSONObject&) = default;
JSONObject& JSONObject::operator=(JSONObject&&) noexcept = default;
JSONObject::~JSONObject() = default;

JSONObject::JSONObject(std::initializer_list<Entry> entries)
    : JSONObject(fromEntries(std::vector<Entry>(entries))) {}

JSONObject JSONObject::fromEntries(std::vector<Entry> entries) {
  JSONObject object;
  const bool sortedAndUnique =
      std::adjacent_find(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return !(a.first < b.first);
      }) == entries.end();
  if (!sortedAndUnique) {
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.first < b.first; });
    // Keep the last of each run of equal keys.
    std::vector<Entry> unique;
    unique.reserve(entries.size());
    for (auto& entry : entries) {
      if (!unique.empty() && unique.back().first == entry.first) {
        unique.back().second = std::move(entry.second);
      } else {
        unique.push_back(std::move(entry));
      }
    }
    entries = std::move(unique);
  }
  object.entries_ = std::move(entries);
  return object;
}

const AnyCodableValue* JSONObject::find(std::string_view key) const {
  auto it = std::lower_bound(entries_.begin(), entries_.end(), key, keyLess);
  return it != entries_.end() && it->first == key ? &it->second : nullptr;
}

AnyCodableValue* JSONObject::find(std::string_view key) {
  auto it = std::lower_bound(entries_.begin(), entries_.end(), key, keyLess);
  return it != entries_.end() && it->first == key ? &it->second : nullptr;
}

AnyCodableValue& JSONObject::set(std::string key, AnyCodableValue value) {
  auto it = std::lower_bound(entries_.begin(), entries_.end(), key, keyLess);
  if (it != entries_.end() && it->first == key) {
    it->second = std::move(value);
    return it->second;
  }
  return entries_.emplace(it, std::move(key), std::move(value))->second;
}

bool JSONObject::erase(std::string_view key) {
  auto it = std::lower_bound(entries_.begin(), entries_.end(), key, keyLess);
  if (it == entries_.end() || it->first != key) return false;
  entries_.erase(it);
  return true;
}

bool operator==(const JSONObject& a, const JSONObject& b) { return a.entries_ == b.entries_; }

AnyCodableValue AnyCodableValue::number(double value) {
  // 2^63 is the first double past the int64 range.
  constexpr double kInt64Bound = 9223372036854775808.0;
  if (std::isfinite(value) && std::trunc(value) == value && value >= -kInt64Bound &&
      value < kInt64Bound) {
    return AnyCodableValue(static_cast<int64_t>(value));
  }
  return AnyCodableValue(value);
}

std::optional<std::string> AnyCodableValue::jsonString() const {
  return writeJSON(*this, JSONStyle::pretty);
}

std::optional<std::string> AnyCodableValue::compactJSONString() const {
  return writeJSON(*this, JSONStyle::compact);
}

std::optional<double> AnyCodableValue::numericValue() const {
  if (auto i = asInt()) return static_cast<double>(*i);
  if (auto d = asDouble()) return *d;
  return std::nullopt;
}

const AnyCodableValue* AnyCodableValue::member(std::string_view key) const {
  const Object* object = asObject();
  return object ? object->find(key) : nullptr;
}

}  // namespace zorvik
