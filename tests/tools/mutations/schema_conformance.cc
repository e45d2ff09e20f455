#include "schema_conformance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace zorvik {
namespace {

constexpr std::array<std::string_view, 12> kKeywords = {
    "type",     "properties", "required", "additionalProperties",
    "enum",     "minimum",    "maximum",  "minItems",
    "maxItems", "items",      "oneOf",    "description"};
constexpr std::array<std::string_view, 7> kTypeNames = {"object",  "array",   "string", "number",
                                                        "integer", "boolean", "null"};

std::string describe(const AnyCodableValue& value) {
  return value.compactJSONString().value_or("<unprintable>");
}

std::vector<std::string> typeNames(const AnyCodableValue& type) {
  std::vector<std::string> names;
  if (const std::string* name = type.asString()) names.push_back(*name);
  if (const auto* list = type.asArray()) {
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
  if (type == "integer") {
    if (value.asInt()) return true;
    const double* number = value.asDouble();
    return number && std::isfinite(*number) && std::trunc(*number) == *number;
  }
  return false;
}

class Checker {
 public:
  explicit Checker(SchemaCheckOptions options) : options_(options) {}

  void check(const AnyCodableValue& schema, const AnyCodableValue& value, const std::string& path) {
    const JSONObject* rules = schema.asObject();
    if (!rules) return;
    if (const AnyCodableValue* type = rules->find("type")) {
      const auto names = typeNames(*type);
      if (std::none_of(names.begin(), names.end(),
                       [&](const std::string& name) { return hasType(value, name); })) {
        fail(path, "expected type " + describe(*type) + ", got " + describe(value));
        return;
      }
    }
    if (const AnyCodableValue* allowed = rules->find("enum")) {
      const auto* list = allowed->asArray();
      if (list && std::find(list->begin(), list->end(), value) == list->end()) {
        fail(path, describe(value) + " is not one of " + describe(*allowed));
      }
    }
    checkBounds(*rules, value, path);
    if (const auto* object = value.asObject()) checkObject(*rules, *object, path);
    if (const auto* array = value.asArray()) checkArray(*rules, *array, path);
    if (const AnyCodableValue* oneOf = rules->find("oneOf")) checkOneOf(*oneOf, value, path);
  }

  std::vector<std::string> takeProblems() { return std::move(problems_); }

 private:
  void fail(const std::string& path, const std::string& problem) {
    problems_.push_back(path + ": " + problem);
  }

  void checkBounds(const JSONObject& rules, const AnyCodableValue& value, const std::string& path) {
    const auto number = value.numericValue();
    if (!number) return;
    const AnyCodableValue* minimum = rules.find("minimum");
    const AnyCodableValue* maximum = rules.find("maximum");
    if (minimum && minimum->numericValue() && *number < *minimum->numericValue()) {
      fail(path, describe(value) + " is below the minimum " + describe(*minimum));
    }
    if (maximum && maximum->numericValue() && *number > *maximum->numericValue()) {
      fail(path, describe(value) + " is above the maximum " + describe(*maximum));
    }
  }

  void checkObject(const JSONObject& rules, const JSONObject& object, const std::string& path) {
    const AnyCodableValue* properties = rules.find("properties");
    const JSONObject* declared = properties ? properties->asObject() : nullptr;
    if (const AnyCodableValue* required = rules.find("required"); required && required->asArray()) {
      for (const auto& key : *required->asArray()) {
        if (key.asString() && !object.contains(*key.asString())) {
          fail(path, "missing required key " + *key.asString());
        }
      }
    }
    const AnyCodableValue* additional = rules.find("additionalProperties");
    const bool closed = additional && additional->asBool() && !*additional->asBool();
    for (const auto& [key, member] : object) {
      const AnyCodableValue* memberSchema = declared ? declared->find(key) : nullptr;
      const std::string memberPath = path + "." + key;
      if (memberSchema) {
        check(*memberSchema, member, memberPath);
      } else if (closed || (options_.rejectUndeclaredKeys && declared)) {
        fail(memberPath, "key is not declared");
      }
    }
  }

  void checkArray(const JSONObject& rules, const AnyCodableValue::Array& array,
                  const std::string& path) {
    const AnyCodableValue* minItems = rules.find("minItems");
    const AnyCodableValue* maxItems = rules.find("maxItems");
    if (minItems && minItems->asInt() && static_cast<int64_t>(array.size()) < *minItems->asInt()) {
      fail(path, "fewer than " + describe(*minItems) + " items");
    }
    if (maxItems && maxItems->asInt() && static_cast<int64_t>(array.size()) > *maxItems->asInt()) {
      fail(path, "more than " + describe(*maxItems) + " items");
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
    const auto* alternatives = oneOf.asArray();
    if (!alternatives) return;
    size_t matches = 0;
    for (const auto& alternative : *alternatives) {
      Checker inner(SchemaCheckOptions{});
      inner.check(alternative, value, path);
      if (inner.problems_.empty()) ++matches;
    }
    if (matches != 1) {
      fail(path, "matches " + std::to_string(matches) + " of the oneOf alternatives, not 1");
    }
  }

  SchemaCheckOptions options_;
  std::vector<std::string> problems_;
};

// `alternative`: the schema is a oneOf branch, whose required keys its parent declares.
void collectDefects(const AnyCodableValue& schema, const std::string& path,
                    std::vector<std::string>& defects, bool alternative = false) {
  auto defect = [&](const std::string& problem) { defects.push_back(path + ": " + problem); };
  const JSONObject* rules = schema.asObject();
  if (!rules) {
    defect("schema is not an object");
    return;
  }
  for (const auto& [keyword, value] : *rules) {
    if (std::find(kKeywords.begin(), kKeywords.end(), keyword) == kKeywords.end()) {
      defect("unknown keyword " + keyword);
    }
  }
  if (const AnyCodableValue* type = rules->find("type")) {
    const auto names = typeNames(*type);
    if (names.empty()) defect("type names nothing");
    for (const auto& name : names) {
      if (std::find(kTypeNames.begin(), kTypeNames.end(), name) == kTypeNames.end()) {
        defect("unknown type " + name);
      }
    }
  }
  const AnyCodableValue* properties = rules->find("properties");
  if (properties && !properties->isObject()) defect("properties is not an object");
  if (const AnyCodableValue* required = rules->find("required")) {
    const auto* keys = required->asArray();
    if (!keys) defect("required is not an array");
    for (const auto& key : keys && !alternative ? *keys : AnyCodableValue::Array{}) {
      const bool declared = key.asString() && properties && properties->asObject() &&
                            properties->asObject()->contains(*key.asString());
      if (!declared) defect("required key " + describe(key) + " is not declared");
    }
  }
  if (const AnyCodableValue* allowed = rules->find("enum")) {
    const auto* list = allowed->asArray();
    if (!list || list->empty()) defect("enum is not a non-empty array");
  }
  for (const char* bound : {"minimum", "maximum", "minItems", "maxItems"}) {
    const AnyCodableValue* value = rules->find(bound);
    if (value && !value->numericValue()) defect(std::string(bound) + " is not a number");
  }
  const AnyCodableValue* additional = rules->find("additionalProperties");
  if (additional && !(additional->asBool() && !*additional->asBool())) {
    defect("additionalProperties other than false");
  }
  if (properties && properties->asObject()) {
    for (const auto& [key, member] : *properties->asObject()) {
      collectDefects(member, path + ".properties." + key, defects);
    }
  }
  if (const AnyCodableValue* items = rules->find("items")) {
    collectDefects(*items, path + ".items", defects);
  }
  if (const AnyCodableValue* oneOf = rules->find("oneOf")) {
    const auto* alternatives = oneOf->asArray();
    if (!alternatives || alternatives->size() < 2) defect("oneOf needs two or more alternatives");
    for (size_t index = 0; alternatives && index < alternatives->size(); ++index) {
      const AnyCodableValue& alternative = (*alternatives)[index];
      collectDefects(alternative, path + ".oneOf[" + std::to_string(index) + "]", defects, true);
      // Keys required by an alternative must be declared by the schema that holds it.
      const AnyCodableValue* required = alternative.member("required");
      for (const auto& key :
           required && required->asArray() ? *required->asArray() : AnyCodableValue::Array{}) {
        if (!key.asString() || !properties || !properties->asObject() ||
            !properties->asObject()->contains(*key.asString())) {
          defect("oneOf requires undeclared key " + describe(key));
        }
      }
    }
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
