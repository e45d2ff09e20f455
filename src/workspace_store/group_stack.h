// GroupStack: an ordered stack of cards hanging from an anchor card inside a folder. All keys are
// required. `axis` is kept as written; the application chooses its values. A plain value.
#pragma once

#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"

namespace zorvik {

class ValueDecoder;

struct GroupStack {
  std::string axis;
  Uuid anchorId;                 // the card the stack hangs from
  std::vector<Uuid> orderedIds;  // members in order
  double crossOffset = 0;

  static GroupStack decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const GroupStack&) const = default;
};

}  // namespace zorvik
