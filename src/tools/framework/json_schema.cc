#include "tools/framework/json_schema.h"

namespace zorvik::schema {

AnyCodableValue with(AnyCodableValue schema, std::string key, AnyCodableValue value) {
  if (auto* members = schema.asObject()) members->set(std::move(key), std::move(value));
  return schema;
}

AnyCodableValue object(JSONObject properties, std::vector<std::string> required) {
  JSONObject result{{"type", "object"}, {"properties", std::move(properties)}};
  if (!required.empty()) {
    AnyCodableValue::Array names(required.begin(), required.end());
    result.set("required", std::move(names));
  }
  return result;
}

AnyCodableValue typed(std::string_view type, std::string_view description) {
  JSONObject result{{"type", type}};
  if (!description.empty()) result.set("description", description);
  return result;
}

AnyCodableValue string(std::string_view description) { return typed("string", description); }
AnyCodableValue integer(std::string_view description) { return typed("integer", description); }
AnyCodableValue number(std::string_view description) { return typed("number", description); }
AnyCodableValue boolean(std::string_view description) { return typed("boolean", description); }

AnyCodableValue stringEnum(std::vector<std::string> values, std::string_view description) {
  AnyCodableValue::Array names(values.begin(), values.end());
  return with(string(description), "enum", std::move(names));
}

AnyCodableValue array(AnyCodableValue items, std::string_view description) {
  return with(typed("array", description), "items", std::move(items));
}

}  // namespace zorvik::schema
