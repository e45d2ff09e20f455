#include "foundation/json/value_decoder.h"

#include <cxxabi.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace zorvik {
namespace {

std::string describeKind(const AnyCodableValue& value) {
  switch (value.kind()) {
    case AnyCodableValue::Kind::null:
      return "null";
    case AnyCodableValue::Kind::boolean:
      return "a boolean";
    case AnyCodableValue::Kind::integer:
    case AnyCodableValue::Kind::number:
      return "a number";
    case AnyCodableValue::Kind::string:
      return "a string";
    case AnyCodableValue::Kind::array:
      return "an array";
    case AnyCodableValue::Kind::object:
      return "a dictionary";
  }
  return "a value";
}

std::string formatNumber(const AnyCodableValue& value) {
  if (auto text = value.compactJSONString()) return *text;
  return "nan";
}

}  // namespace

std::string recordTypeName(const char* mangledName) {
  int status = 0;
  std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(mangledName, nullptr, nullptr, &status), &std::free);
  std::string name = status == 0 && demangled ? demangled.get() : mangledName;
  for (const std::string prefix : {"(anonymous namespace)::", "zorvik::"}) {
    for (size_t at = name.find(prefix); at != std::string::npos; at = name.find(prefix)) {
      name.erase(at, prefix.size());
    }
  }
  return name;
}

CodingPath CodingPathNode::materialise() const {
  CodingPath path;
  for (const CodingPathNode* node = this; node && !node->isRoot; node = node->parent) {
    path.push_back(node->index >= 0 ? CodingKey::index(node->index)
                                    : CodingKey::key(std::string(node->key)));
  }
  std::reverse(path.begin(), path.end());
  return path;
}

void ValueDecoder::throwTypeMismatch(const std::string& typeName) const {
  throw DecodingError::typeMismatch(
      typeName, codingPath(),
      "Expected to decode " + typeName + " but found " + describeKind(value_) + " instead.");
}

void ValueDecoder::throwValueNotFound(const std::string& typeName) const {
  throw DecodingError::valueNotFound(typeName, codingPath(),
                                     "Expected " + typeName + " value but found null instead.");
}

void ValueDecoder::throwDataCorrupted(const std::string& debugDescription) const {
  throw DecodingError::dataCorrupted(codingPath(), debugDescription);
}

ObjectDecoder ValueDecoder::object() const {
  const JSONObject* members = value_.asObject();
  if (!members) throwTypeMismatch("Dictionary<String, Any>");
  return ObjectDecoder(*members, node_);
}

const AnyCodableValue::Array& ValueDecoder::array() const {
  const AnyCodableValue::Array* elements = value_.asArray();
  if (!elements) throwTypeMismatch("Array<Any>");
  return *elements;
}

bool ValueDecoder::decodeBool() const {
  if (const bool* flag = value_.asBool()) return *flag;
  throwTypeMismatch("Bool");
}

int64_t ValueDecoder::decodeInteger(const std::string& typeName, int64_t min, int64_t max) const {
  if (const int64_t* integer = value_.asInt()) {
    if (*integer < min || *integer > max) {
      throwDataCorrupted("Parsed JSON number <" + formatNumber(value_) + "> does not fit in " +
                         typeName + ".");
    }
    return *integer;
  }
  if (value_.asDouble()) {
    throwDataCorrupted("Parsed JSON number <" + formatNumber(value_) + "> does not fit in " +
                       typeName + ".");
  }
  throwTypeMismatch(typeName);
}

double ValueDecoder::decodeDouble() const {
  if (auto number = value_.numericValue()) return *number;
  throwTypeMismatch("Double");
}

const std::string& ValueDecoder::decodeString() const {
  if (const std::string* text = value_.asString()) return *text;
  throwTypeMismatch("String");
}

Uuid ValueDecoder::decodeUuid() const {
  if (auto uuid = Uuid::parse(decodeString())) return *uuid;
  throwDataCorrupted("Attempted to decode UUID from invalid UUID string.");
}

Date ValueDecoder::decodeDate() const {
  if (auto date = parseISO8601(decodeString())) return *date;
  throwDataCorrupted("Expected date string to be ISO8601-formatted.");
}

void ObjectDecoder::throwKeyNotFound(std::string_view key) const {
  throw DecodingError::keyNotFound(std::string(key), codingPath(),
                                   "No value associated with key \"" + std::string(key) + "\".");
}

void ObjectDecoder::throwDataCorrupted(std::string_view key, const std::string& debug) const {
  CodingPath path = codingPath();
  path.push_back(CodingKey::key(std::string(key)));
  throw DecodingError::dataCorrupted(std::move(path), debug);
}

}  // namespace zorvik
