// Small builders for the JSON-Schema objects of tool specs, so that a spec reads as its table does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik::schema {

// {"type":"object","properties":{...}} plus "required" when `required` is not empty.
AnyCodableValue object(JSONObject properties, std::vector<std::string> required = {});
// {"type":<type>} plus "description" when not empty.
AnyCodableValue typed(std::string_view type, std::string_view description = {});
AnyCodableValue string(std::string_view description = {});
AnyCodableValue integer(std::string_view description = {});
AnyCodableValue number(std::string_view description = {});
AnyCodableValue boolean(std::string_view description = {});
// {"type":"string","enum":[...]} plus "description" when not empty.
AnyCodableValue stringEnum(std::vector<std::string> values, std::string_view description = {});
// {"type":"array","items":items} plus "description" when not empty.
AnyCodableValue array(AnyCodableValue items, std::string_view description = {});
// A copy of `schema` with `key` set to `value`.
AnyCodableValue with(AnyCodableValue schema, std::string key, AnyCodableValue value);

}  // namespace zorvik::schema
