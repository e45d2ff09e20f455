// A checker for the JSON Schema keywords that AgentToolSpec schemas use, so that tests can hold
// examples and answers to the schemas that agents read.
//
// Keywords: type (a name or a list of names), properties, required, additionalProperties (false
// only), enum, minimum, maximum, minItems, items, oneOf and description. schemaDefects reports any
// other keyword, so that the checker never silently ignores part of a contract.
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

// Faults of a schema itself: unknown keywords, unknown type names, and required keys (of the
// schema or of its oneOf alternatives) that its `properties` do not declare.
std::vector<std::string> schemaDefects(const AnyCodableValue& schema);

}  // namespace zorvik
