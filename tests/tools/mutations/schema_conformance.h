// A checker for the subset of JSON Schema that AgentToolSpec schemas use, so that tests can hold
// examples and answers to the schemas that agents read.
//
// Keywords: type (a name or a list of names), properties, required, additionalProperties (false
// only), enum, minimum, maximum, minItems, maxItems, items, oneOf and description. A schema using
// any other keyword is reported by schemaDefects, so that the checker never silently ignores part
// of a contract.
#pragma once

#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct SchemaCheckOptions {
  // Reject object keys that the schema's `properties` do not declare, even where
  // additionalProperties is not false: examples must use only documented keys.
  bool rejectUndeclaredKeys = false;
};

// What keeps `value` from conforming to `schema`, each as "<path>: <problem>"; empty if it
// conforms.
std::vector<std::string> schemaViolations(const AnyCodableValue& schema,
                                          const AnyCodableValue& value,
                                          SchemaCheckOptions options = {});

// Faults of a schema itself: unknown keywords, unknown type names, required keys that
// `properties` does not declare, malformed enum, bounds or subschemas.
std::vector<std::string> schemaDefects(const AnyCodableValue& schema);

}  // namespace zorvik
