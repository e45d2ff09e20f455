// The system's JSON writer. Keys come out sorted by UTF-8 bytes (the order JSONObject keeps).
// Pretty form indents by two spaces and writes `"key" : value`; compact form has no white space.
// Strings escape `"`, `\`, `/` (as `\/`) and control characters and are otherwise written as UTF-8;
// bytes that are not valid UTF-8 are written as U+FFFD. Integers print as integers; doubles print
// in the shortest form that reads back equal, integral ones without a fraction.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

enum class JSONStyle { compact, pretty };

// The JSON text of `value`; nullopt when it holds a NaN or an infinity, which JSON cannot express.
std::optional<std::string> writeJSON(const AnyCodableValue& value, JSONStyle style);

// Appends `text` as a quoted, escaped JSON string.
void appendJSONString(std::string& out, std::string_view text);

}  // namespace zorvik
