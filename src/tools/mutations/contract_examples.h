// Tool examples written as JSON text, so that a contract's examples read as an agent sees them.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

// Parses each text as one example input. The texts are constants of the program, so malformed
// JSON is a programming error and throws the parser's DecodingError.
std::vector<AnyCodableValue> parseExamples(std::initializer_list<std::string_view> texts);

}  // namespace zorvik
