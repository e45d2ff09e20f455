#include "schema_conformance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace zorvik {
namespace {

constexpr std::array<std::string_view, 11> kKeywords = {
    "type",     "properties", "required", "additionalProperties", "enum", "minimum", "maximum",
    "minItems", "items",      "oneOf",    "description"};
constexpr std::array<std::string_view, 7> kTypeNames = {"object",  "array",   "string", "number",
                                                        "integer", "boolean", "null"};

template <typename List, typename Item>
bool contains(const List& list, const Item& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

std::string describe(const AnyCodableValue& value) {
  return value.compactJSONString().value_or("<unprintable>");
}

std::vector<std::string> stringsOf(const AnyCodableValue* value) {
  std::vector<std::string> names;
  if (!value) return names;
  if (const std::string* name = value->asString()) names.push_back(*name);
  if (const auto* list = value->asArray()) {
    for (const auto& entry : *list) {
      if (const std::string* name = entry.asString()) names.push_back(*name);
    }
  }
  return names;
}

bool hasType(const AnyCodableValue& value, std::string_view type) {
  if (type == "object") return value.isObject();
  if (type == "array") return value.isArray();
  if (type == "string") return value.isString();
  if (type == "boolean") return value.asBool() != nullptr;
  if (type == "null") return value.isNull();
  if (type == "number") return value.numericValue().has_value();
  if (type != "integer") return false;
  const double* number = value.asDouble();
  return value.asInt() || (number && std::isfinite(*number) && std::trunc(*number) == *number);
}

class Checker {
 public:
  explicit Checker(SchemaCheckOptions options) : options_(options) {}

  void check(const AnyCodableValue& schema, const AnyCodableValue& value, const std::string& path) {
    const JSONObject* rules = schema.asObject();
    if (!rules) return;
    if (const AnyCodableValue* type = rules->find("type")) {
      const auto names = stringsOf(type);
      if (std::none_of(names.begin(), names.end(),
                       [&](const std::string& name) { return hasType(value, name); })) {
        return fail(path, "expected type " + describe(*type) + ", got " + describe(value));
      }
    }
    const AnyCodableValue* allowed = rules->find("enum");
    if (allowed && allowed->asArray() && !contains(*allowed->asArray(), value)) {
      fail(path, describe(value) + " is not one of " + describe(*allowed));
    }
    const auto number = value.numericValue();
    const AnyCodableValue* minimum = rules->find("minimum");
    const AnyCodableValue* maximum = rules->find("maximum");
    if (number && minimum && *number < minimum->numericValue().value_or(*number)) {
      fail(path, describe(value) + " is below the minimum " + describe(*minimum));
    }
    if (number && maximum && *number > maximum->numericValue().value_or(*number)) {
      fail(path, describe(value) + " is above the maximum " + describe(*maximum));
    }
    if (const auto* object = value.asObject()) checkObject(*rules, *object, path);
    if (const auto* array = value.asArray()) checkArray(*rules, *array, path);
    if (const AnyCodableValue* oneOf = rules->find("oneOf")) checkOneOf(*oneOf, value, path);
  }

  std::vector<std::string> takeProblems() { return std::move(problems_); }

 private:
  void fail(const std::string& path, const std::string& problem) {
    problems_.push_back(path + ": " + problem);
  }

  void checkObject(const JSONObject& rules, const JSONObject& object, const std::string& path) {
    for (const auto& key : stringsOf(rules.find("required"))) {
      if (!object.contains(key)) fail(path, "missing required key " + key);
    }
    const AnyCodableValue* properties = rules.find("properties");
    const JSONObject* declared = properties ? properties->asObject() : nullptr;
    const AnyCodableValue* additional = rules.find("additionalProperties");
    const bool closed = additional && additional->asBool() && !*additional->asBool();
    for (const auto& [key, member] : object) {
      if (const AnyCodableValue* memberSchema = declared ? declared->find(key) : nullptr) {
        check(*memberSchema, member, path + "." + key);
      } else if (closed || (options_.rejectUndeclaredKeys && declared)) {
        fail(path + "." + key, "key is not declared");
      }
    }
  }

  void checkArray(const JSONObject& rules, const AnyCodableValue::Array& array,
                  const std::string& path) {
    const AnyCodableValue* minItems = rules.find("minItems");
    if (minItems && minItems->asInt() && static_cast<int64_t>(array.size()) < *minItems->asInt()) {
      fail(path, "fewer than " + describe(*minItems) + " items");
    }
    if (const AnyCodableValue* items = rules.find("items")) {
      for (size_t index = 0; index < array.size(); ++index) {
        check(*items, array[index], path + "[" + std::to_string(index) + "]");
      }
    }
  }

  // The alternatives only decide between shapes; documented keys are checked by the schema that
  // holds the oneOf, so undeclared keys do not count against an alternative.
  void checkOneOf(const AnyCodableValue& oneOf, const AnyCodableValue& value,
                  const std::string& path) {
    size_t matches = 0;
    for (size_t index = 0; oneOf.asArray() && index < oneOf.asArray()->size(); ++index) {
      Checker inner(SchemaCheckOptions{});
      inner.check((*oneOf.asArray())[index], value, path);
      if (inner.problems_.empty()) ++matches;
    }
    if (matches != 1) {
      fail(path, "matches " + std::to_string(matches) + " of the oneOf alternatives, not 1");
    }
  }

  SchemaCheckOptions options_;
  std::vector<std::string> problems_;
};

// `declared`: the properties that the schema's required keys must name; a oneOf alternative's
// required keys are declared by the schema that holds it.
void collectDefects(const AnyCodableValue& schema, const std::string& path,
                    std::vector<std::string>& defects, const JSONObject* declared = nullptr) {
  static const JSONObject kNoProperties;
  auto defect = [&](const std::string& problem) { defects.push_back(path + ": " + problem); };
  const JSONObject* rules = schema.asObject();
  if (!rules) return defect("schema is not an object");
  for (const auto& [keyword, value] : *rules) {
    if (!contains(kKeywords, keyword)) defect("unknown keyword " + keyword);
  }
  for (const auto& name : stringsOf(rules->find("type"))) {
    if (!contains(kTypeNames, name)) defect("unknown type " + name);
  }
  const AnyCodableValue* properties = rules->find("properties");
  const JSONObject* own = properties ? properties->asObject() : nullptr;
  for (const auto& key : stringsOf(rules->find("required"))) {
    const JSONObject* names = declared ? declared : own;
    if (!names || !names->contains(key)) defect("required key \"" + key + "\" is not declared");
  }
  if (own) {
    for (const auto& [key, member] : *own) {
      collectDefects(member, path + ".properties." + key, defects);
    }
  }
  if (const AnyCodableValue* items = rules->find("items")) {
    collectDefects(*items, path + ".items", defects);
  }
  const AnyCodableValue* oneOf = rules->find("oneOf");
  const auto* alternatives = oneOf ? oneOf->asArray() : nullptr;
  for (size_t index = 0; alternatives && index < alternatives->size(); ++index) {
    collectDefects((*alternatives)[index], path + ".oneOf[" + std::to_string(index) + "]", defects,
                   own ? own : &kNoProperties);
  }
}

}  // namespace

std::vector<std::string> schemaViolations(const AnyCodableValue& schema,
                                          const AnyCodableValue& value,
                                          SchemaCheckOptions options) {
  Checker checker(options);
  checker.check(schema, value, "$");
  return checker.takeProblems();
}

std::vector<std::string> schemaDefects(const AnyCodableValue& schema) {
  std::vector<std::string> defects;
  collectDefects(schema, "$", defects);
  return defects;
}

}  // namespace zorvik
