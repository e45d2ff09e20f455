// WorkspaceCardContractDescriptor: the description of a card format version, as the bundled
// CardContracts resources state it. All keys are required except cardMeta's `field`.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

// Where a current card carries its format version ("meta.version") and whether it must.
struct CardMetaDescriptor {
  std::optional<std::string> field;
  bool required = false;

  static CardMetaDescriptor decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const CardMetaDescriptor&) const = default;
};

struct WorkspaceCardContractDescriptor {
  int64_t version = 0;  // the value of meta.version in a card of this format
  std::string status;
  std::string canonicalEnvelope;
  CardMetaDescriptor cardMeta;
  std::vector<int64_t> projectStructureVersions;  // accepted `version` values of workspace.json
  std::vector<std::string> storageModes;
  std::map<std::string, std::vector<std::string>> sidecarLayout;  // body kind -> sidecar paths
  std::vector<std::string> notes;

  static WorkspaceCardContractDescriptor decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardContractDescriptor&) const = default;
};

}  // namespace zorvik
