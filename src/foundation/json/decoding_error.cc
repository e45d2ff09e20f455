#include "foundation/json/decoding_error.h"

namespace zorvik {

std::string joinCodingPath(const CodingPath& path) {
  std::string joined;
  for (const auto& key : path) {
    if (!joined.empty()) joined += '.';
    if (key.intValue) {
      joined += '[' + std::to_string(*key.intValue) + ']';
    } else {
      joined += key.stringValue;
    }
  }
  return joined;
}

DecodingError::DecodingError(Kind kind, std::string typeName, std::string key, CodingPath path,
                             std::string debug)
    : kind_(kind),
      typeName_(std::move(typeName)),
      key_(std::move(key)),
      path_(std::move(path)),
      debug_(std::move(debug)) {
  description_ = describeDecodingError(*this);
}

DecodingError DecodingError::typeMismatch(std::string typeName, CodingPath path,
                                          std::string debug) {
  return DecodingError(Kind::typeMismatch, std::move(typeName), "", std::move(path),
                       std::move(debug));
}

DecodingError DecodingError::valueNotFound(std::string typeName, CodingPath path,
                                           std::string debug) {
  return DecodingError(Kind::valueNotFound, std::move(typeName), "", std::move(path),
                       std::move(debug));
}

DecodingError DecodingError::keyNotFound(std::string key, CodingPath path, std::string debug) {
  return DecodingError(Kind::keyNotFound, "", std::move(key), std::move(path), std::move(debug));
}

DecodingError DecodingError::dataCorrupted(CodingPath path, std::string debug) {
  return DecodingError(Kind::dataCorrupted, "", "", std::move(path), std::move(debug));
}

std::string describeDecodingError(const DecodingError& error) {
  const std::string path = joinCodingPath(error.codingPath());
  switch (error.kind()) {
    case DecodingError::Kind::typeMismatch:
      return path.empty()
                 ? "Type mismatch for " + error.typeName() + ": " + error.debugDescription()
                 : "Type mismatch at " + path + " for " + error.typeName() + ": " +
                       error.debugDescription();
    case DecodingError::Kind::valueNotFound:
      return path.empty()
                 ? "Missing value for " + error.typeName() + ": " + error.debugDescription()
                 : "Missing value at " + path + " for " + error.typeName() + ": " +
                       error.debugDescription();
    case DecodingError::Kind::keyNotFound: {
      if (path.empty()) return "Missing required key '" + error.key() + "'.";
      CodingPath full = error.codingPath();
      full.push_back(CodingKey::key(error.key()));
      return "Missing required key at " + joinCodingPath(full) + ".";
    }
    case DecodingError::Kind::dataCorrupted:
      return path.empty() ? error.debugDescription() : error.debugDescription() + " at " + path;
  }
  return error.debugDescription();
}

}  // namespace zorvik
