// How the command line reports a tool's answer and a tool's failure.
#pragma once

#include <exception>
#include <ostream>
#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

// True when `value` is an object and, tested in this order: "status" is a string equal to "error"
// (any case); "ok" is false; "mutation_outcome" is an object whose "status" is "failed" or
// "partial"; "persistence" is an object whose "status" is "missing" or "partial". Any other shape,
// and any value that is no object, is success.
bool statusIsError(const AnyCodableValue& value);

// Prints the value's JSON text ("{}" when it has none) and a newline; then, when statusIsError
// holds, throws ZorvikCLIError::processFailed(failureStatus). The answer is on standard output in
// the failure case as well.
void reportToolResult(std::ostream& out, const AnyCodableValue& value, int failureStatus);

// The detail of a failed call: the decoding error's wording, or the error's own description.
std::string describeDecodingError(const std::exception& error);

// "Invalid arguments for tool '<tool>': <detail>. Run `zorvik agent tool-details <tool> --json`
// for exact schema and examples."
std::string formatToolInvocationError(std::string_view tool, const std::exception& error);

}  // namespace zorvik
