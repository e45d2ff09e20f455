#include "cli/tool_result_reporting.h"

#include "cli/zorvik_cli_error.h"
#include "foundation/json/decoding_error.h"
#include "foundation/text.h"

namespace zorvik {
namespace {

// Whether `object[key]` is an object whose "status" string, lower-cased, is one of `words`.
bool nestedStatusIsOneOf(const AnyCodableValue& object, std::string_view key,
                         std::initializer_list<std::string_view> words) {
  const AnyCodableValue* nested = object.member(key);
  const AnyCodableValue* status = nested ? nested->member("status") : nullptr;
  if (!status || !status->asString()) return false;
  const std::string lowered = lowercased(*status->asString());
  for (std::string_view word : words) {
    if (lowered == word) return true;
  }
  return false;
}

}  // namespace

bool statusIsError(const AnyCodableValue& value) {
  if (!value.isObject()) return false;
  const AnyCodableValue* status = value.member("status");
  if (status && status->asString() && lowercased(*status->asString()) == "error") return true;
  const AnyCodableValue* ok = value.member("ok");
  if (ok && ok->asBool() && !*ok->asBool()) return true;
  return nestedStatusIsOneOf(value, "mutation_outcome", {"failed", "partial"}) ||
         nestedStatusIsOneOf(value, "persistence", {"missing", "partial"});
}

void reportToolResult(std::ostream& out, const AnyCodableValue& value, int failureStatus) {
  out << value.jsonString().value_or("{}") << '\n';
  if (statusIsError(value)) throw ZorvikCLIError::processFailed(failureStatus);
}

std::string describeDecodingError(const std::exception& error) {
  if (const auto* decoding = dynamic_cast<const DecodingError*>(&error)) {
    return describeDecodingError(*decoding);
  }
  return error.what();
}

std::string formatToolInvocationError(std::string_view tool, const std::exception& error) {
  const std::string name(tool);
  return "Invalid arguments for tool '" + name + "': " + describeDecodingError(error) +
         ". Run `zorvik agent tool-details " + name + " --json` for exact schema and examples.";
}

}  // namespace zorvik
