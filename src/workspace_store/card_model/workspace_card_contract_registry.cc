#include "workspace_store/card_model/workspace_card_contract_registry.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "foundation/atomic_file.h"
#include "foundation/domain_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/resource_locator.h"

namespace zorvik {

const WorkspaceCardContractDescriptor& WorkspaceCardContractRegistry::current() {
  static const WorkspaceCardContractDescriptor descriptor = [] {
    try {
      return load(currentResourcePath);
    } catch (const std::exception& error) {
      std::fprintf(stderr, "[WorkspaceCardContractRegistry] cannot load %s: %s\n",
                   std::string(currentResourcePath).c_str(), error.what());
      std::abort();
    }
  }();
  return descriptor;
}

WorkspaceCardContractDescriptor WorkspaceCardContractRegistry::contract(int64_t version) {
  const WorkspaceCardContractDescriptor& currentContract = current();
  if (version == currentContract.version) return currentContract;
  return load("CardContracts/versions/" + std::to_string(version) + ".json");
}

WorkspaceCardContractDescriptor WorkspaceCardContractRegistry::load(std::string_view resourcePath) {
  std::optional<std::string> contents;
  if (auto path = findResource(resourcePath)) contents = readFileContents(*path);
  if (!contents) {
    throw DomainError("WorkspaceCardContractRegistry", 1,
                      "Missing bundled card contract resource: " + std::string(resourcePath));
  }
  return decodeValue<WorkspaceCardContractDescriptor>(AnyCodableValue::parse(*contents));
}

}  // namespace zorvik
