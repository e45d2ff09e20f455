// DecodingError: why a typed record could not be read from an AnyCodableValue, and where.
//
// The coding path names the position in the value: object keys and array indices from the root.
// what() is the sentence a user reads (see describeDecodingError).
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace zorvik {

struct CodingKey {
  std::string stringValue;
  std::optional<int> intValue;

  static CodingKey key(std::string name) { return {std::move(name), std::nullopt}; }
  static CodingKey index(int position) { return {"Index " + std::to_string(position), position}; }
  bool operator==(const CodingKey&) const = default;
};

using CodingPath = std::vector<CodingKey>;

// Keys joined by ".", indices written as "[n]": "cards.[0].type".
std::string joinCodingPath(const CodingPath& path);

class DecodingError : public std::exception {
 public:
  enum class Kind { typeMismatch, valueNotFound, keyNotFound, dataCorrupted };

  static DecodingError typeMismatch(std::string typeName, CodingPath path, std::string debug);
  static DecodingError valueNotFound(std::string typeName, CodingPath path, std::string debug);
  // `path` is where the containing object stands; the missing key is not part of it.
  static DecodingError keyNotFound(std::string key, CodingPath path, std::string debug);
  static DecodingError dataCorrupted(CodingPath path, std::string debug);

  Kind kind() const { return kind_; }
  const CodingPath& codingPath() const { return path_; }
  // The requested type for type mismatches and missing values ("String", "Int", "Point", ...).
  const std::string& typeName() const { return typeName_; }
  // The missing key for keyNotFound.
  const std::string& key() const { return key_; }
  const std::string& debugDescription() const { return debug_; }

  const char* what() const noexcept override { return description_.c_str(); }

 private:
  DecodingError(Kind kind, std::string typeName, std::string key, CodingPath path,
                std::string debug);

  Kind kind_;
  std::string typeName_;
  std::string key_;
  CodingPath path_;
  std::string debug_;
  std::string description_;
};

// The user-facing wording of a decoding error:
//   type mismatch   "Type mismatch at <path> for <type>: <debug>"  or "Type mismatch for <type>:
//   <debug>" value not found "Missing value at <path> for <type>: <debug>"  or "Missing value for
//   <type>: <debug>" key not found   "Missing required key at <path>.<key>."        or "Missing
//   required key '<key>'." data corrupted  "<debug> at <path>"                             or
//   "<debug>"
std::string describeDecodingError(const DecodingError& error);

}  // namespace zorvik
