#include "workspace_store/card_model/workspace_card_contract_descriptor.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

CardMetaDescriptor CardMetaDescriptor::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::string>("field"), object.required<bool>("required")};
}

AnyCodableValue CardMetaDescriptor::encode() const {
  return ObjectEncoder().add("field", field).add("required", required).build();
}

WorkspaceCardContractDescriptor WorkspaceCardContractDescriptor::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCardContractDescriptor{
      .version = object.required<int64_t>("version"),
      .status = object.required<std::string>("status"),
      .canonicalEnvelope = object.required<std::string>("canonicalEnvelope"),
      .cardMeta = object.required<CardMetaDescriptor>("cardMeta"),
      .projectStructureVersions = object.required<std::vector<int64_t>>("projectStructureVersions"),
      .storageModes = object.required<std::vector<std::string>>("storageModes"),
      .sidecarLayout =
          object.required<std::map<std::string, std::vector<std::string>>>("sidecarLayout"),
      .notes = object.required<std::vector<std::string>>("notes"),
  };
}

AnyCodableValue WorkspaceCardContractDescriptor::encode() const {
  return ObjectEncoder()
      .add("version", version)
      .add("status", status)
      .add("canonicalEnvelope", canonicalEnvelope)
      .add("cardMeta", cardMeta)
      .add("projectStructureVersions", projectStructureVersions)
      .add("storageModes", storageModes)
      .add("sidecarLayout", sidecarLayout)
      .add("notes", notes)
      .build();
}

}  // namespace zorvik
