// JSON text to AnyCodableValue over simdjson's DOM parser. This is the only file that includes
// simdjson: the header is large and slow to compile.
#include <simdjson.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "foundation/domain_error.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/decoding_error.h"
#include "foundation/parallel_for.h"

namespace zorvik {
namespace {

// Documents above this size get a parser of their own so that the thread's reusable parser does
// not keep their buffers alive.
constexpr size_t kReusableParserLimit = 64 << 10;

// Arrays at least this long are converted on several threads.
constexpr size_t kParallelArrayMinimum = 1024;

AnyCodableValue convert(simdjson::dom::element element);

AnyCodableValue convertArray(simdjson::dom::array source) {
  AnyCodableValue::Array array;
  if (source.size() < kParallelArrayMinimum) {
    array.reserve(source.size());
    for (simdjson::dom::element child : source) array.push_back(convert(child));
    return AnyCodableValue(std::move(array));
  }
  // The parsed document is read-only here, so its elements convert independently.
  std::vector<simdjson::dom::element> children(source.begin(), source.end());
  array.resize(children.size());
  parallelFor(
      children.size(), [&](size_t i) { array[i] = convert(children[i]); },
      kParallelArrayMinimum / 2);
  return AnyCodableValue(std::move(array));
}

AnyCodableValue convert(simdjson::dom::element element) {
  switch (element.type()) {
    case simdjson::dom::element_type::NULL_VALUE:
      return AnyCodableValue();
    case simdjson::dom::element_type::BOOL:
      return AnyCodableValue(bool(element.get_bool().value_unsafe()));
    case simdjson::dom::element_type::INT64:
      return AnyCodableValue(int64_t(element.get_int64().value_unsafe()));
    case simdjson::dom::element_type::UINT64:
      return AnyCodableValue::number(static_cast<double>(element.get_uint64().value_unsafe()));
    case simdjson::dom::element_type::DOUBLE:
      return AnyCodableValue::number(element.get_double().value_unsafe());
    case simdjson::dom::element_type::STRING:
      return AnyCodableValue(std::string(element.get_string().value_unsafe()));
    case simdjson::dom::element_type::ARRAY:
      return convertArray(element.get_array().value_unsafe());
    case simdjson::dom::element_type::OBJECT: {
      simdjson::dom::object source = element.get_object().value_unsafe();
      std::vector<JSONObject::Entry> entries;
      entries.reserve(source.size());
      for (simdjson::dom::key_value_pair field : source) {
        entries.emplace_back(std::string(field.key), convert(field.value));
      }
      return AnyCodableValue(JSONObject::fromEntries(std::move(entries)));
    }
  }
  return AnyCodableValue();
}

// simdjson refuses integer literals beyond 64 bits, which are valid JSON and read as doubles
// elsewhere. Gives the text with ".0" after each such literal, or nullopt when it has none.
std::optional<std::string> markOversizeIntegersAsDoubles(std::string_view text) {
  std::string rewritten;
  bool changed = false;
  size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == '"') {  // copy a string token whole, escapes included
      size_t end = i + 1;
      while (end < text.size() && text[end] != '"') end += text[end] == '\\' ? 2 : 1;
      end = std::min(end + 1, text.size());
      rewritten.append(text.substr(i, end - i));
      i = end;
      continue;
    }
    if (c == '-' || (c >= '0' && c <= '9')) {
      size_t end = i + (c == '-' ? 1 : 0);
      while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
      const size_t digits = end - i - (c == '-' ? 1 : 0);
      const bool integral =
          end >= text.size() || (text[end] != '.' && text[end] != 'e' && text[end] != 'E');
      rewritten.append(text.substr(i, end - i));
      while (end < text.size() && std::strchr("0123456789.eE+-", text[end])) {
        rewritten += text[end++];
      }
      if (integral && digits > 19) {
        rewritten += ".0";
        changed = true;
      }
      i = end;
      continue;
    }
    rewritten += c;
    ++i;
  }
  if (!changed) return std::nullopt;
  return rewritten;
}

[[noreturn]] void throwInvalidJSON(simdjson::error_code error) {
  throw DecodingError::dataCorrupted({}, std::string("The given data was not valid JSON (") +
                                             simdjson::error_message(error) + ").");
}

}  // namespace

AnyCodableValue AnyCodableValue::parse(std::string_view text) {
  if (!simdjson::validate_utf8(text.data(), text.size())) {
    throw DomainError("AnyCodableValue", 1, "Invalid UTF-8 string");
  }
  std::optional<simdjson::dom::parser> ownParser;
  thread_local simdjson::dom::parser reusableParser;
  simdjson::dom::parser& parser =
      text.size() > kReusableParserLimit ? ownParser.emplace() : reusableParser;
  simdjson::dom::element root;
  auto error = parser.parse(text.data(), text.size()).get(root);
  if (error == simdjson::NUMBER_ERROR) {
    if (auto rewritten = markOversizeIntegersAsDoubles(text)) {
      error = parser.parse(rewritten->data(), rewritten->size()).get(root);
    }
  }
  if (error) throwInvalidJSON(error);
  return convert(root);
}

}  // namespace zorvik
