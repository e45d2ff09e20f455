// WorkspaceCardContractRegistry: the card format contracts bundled with the program, and the
// guidance text that tells agents how to edit a board through the filesystem.
//
// Contracts are the resources "CardContracts/current.json" and
// "CardContracts/versions/<version>.json", found with findResource. The current contract is loaded
// once, on first use, thread-safely; the program is built with it, so when it cannot be found or
// decoded the process prints the reason to stderr and aborts. Other versions are loaded on every
// call and report failures by throwing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "workspace_store/card_model/workspace_card_contract_descriptor.h"

namespace zorvik {

class WorkspaceCardContractRegistry {
 public:
  static constexpr std::string_view currentResourcePath = "CardContracts/current.json";

  // Injected into agent prompts as is.
  static constexpr std::string_view filesystemEditGuidance =
      R"TEXT(Filesystem-first rule for boards: the project root is a normal folder. )TEXT"
      R"TEXT(Board-only metadata lives in `{project_root}/.zorvik/workspace.json`. )TEXT"
      R"TEXT(Content files stay human-readable next to it: rich text uses `.md`, tables use )TEXT"
      R"TEXT(`.csv`, html cards use folders with `index.html`, and link cards use `.md` with )TEXT"
      R"TEXT(`zorvik-kind: "link"` front matter. When editing via filesystem, update the real )TEXT"
      R"TEXT(content file plus `.zorvik/workspace.json` only when layout/board metadata changes, )TEXT"
      R"TEXT(then run `zorvik project validate`. When direct edits touch existing card )TEXT"
      R"TEXT(envelopes, do not remove existing envelope fields you are not explicitly changing. )TEXT"
      R"TEXT(Current-format cards may also externalize heavy bodies under )TEXT"
      R"TEXT(`resources/cards/{card_id}/...`; preserve those sidecar paths and edit the )TEXT"
      R"TEXT(referenced resource files instead of flattening or moving content.)TEXT";

  // The current contract; aborts the process when the bundled resource is missing or invalid.
  static const WorkspaceCardContractDescriptor& current();

  // The current contract when `version` is its version, else
  // "CardContracts/versions/<version>.json". Throws as load does.
  static WorkspaceCardContractDescriptor contract(int64_t version);

  // Reads and decodes the contract resource at `resourcePath`. A resource that cannot be found or
  // read throws DomainError("WorkspaceCardContractRegistry", 1,
  // "Missing bundled card contract resource: <resourcePath>"); invalid JSON or a wrong shape
  // throws DecodingError.
  static WorkspaceCardContractDescriptor load(std::string_view resourcePath);
};

}  // namespace zorvik
