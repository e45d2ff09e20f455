#include "tools/layout/list_card_layouts_tool.h"

#include <stdexcept>
#include <unordered_set>
#include <vector>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/layout/layout_item.h"
#include "tools/layout/snapshot_card_index.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

constexpr std::string_view kToolName = "list_card_layouts";

struct ListCardLayoutsRequest {
  std::optional<std::vector<std::string>> cardIDs;
  std::optional<std::string> scope;
  bool includeConstraints = false;

  static ListCardLayoutsRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::vector<std::string>>("card_ids"),
            object.optional<std::string>("scope"),
            object.value<bool>("include_constraints", false)};
  }
};

ListCardLayoutsRequest decodeRequest(const AnyCodableValue& input) {
  try {
    return decodeValue<ListCardLayoutsRequest>(input);
  } catch (const DecodingError& error) {
    throw std::invalid_argument(std::string(ListCardLayoutsTool::kInvalidInputPrefix) +
                                describeDecodingError(error));
  }
}

AgentToolSpec listCardLayoutsSpec() {
  return AgentToolSpec{
      .name = std::string(kToolName),
      .summary = "List card geometry, z-index, parent, and snap constraints.",
      .inputSchema = schema::object({
          {"project_path",
           schema::string("Project folder; defaults to the project the session is bound to.")},
          {"card_ids",
           schema::array(schema::string(), "Card UUIDs; when given, scope is not needed.")},
          {"scope", schema::stringEnum({"board"}, "\"board\" lists every card.")},
          {"include_constraints",
           schema::boolean("Include each card's snap constraints (default false).")},
      }),
      .outputSchema = schema::object(
          {
              {"total", schema::integer("Number of layouts returned.")},
              {"layouts", schema::array(LayoutItem::jsonSchema())},
              {"missing_card_ids", schema::array(schema::string())},
          },
          {"total", "layouts", "missing_card_ids"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{
                  {"card_ids", AnyCodableValue::Array{"3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"}},
                  {"include_constraints", true}},
              JSONObject{{"scope", "board"}},
          },
      .notes =
          "Reads the saved project; works without the running app. frame is the top-left "
          "position and size in board coordinates, center its middle. Ids without a card are "
          "listed in missing_card_ids.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

// The cards to report, in answer order, and the requested ids that name no card.
struct LayoutSelection {
  std::vector<const CardRecord*> cards;
  std::vector<std::string> missing;
};

LayoutSelection selectByIDs(const std::vector<std::string>& requested,
                            const SnapshotCardIndex& index) {
  LayoutSelection selection;
  std::unordered_set<const CardRecord*> taken;
  std::unordered_set<std::string> missing;
  for (const std::string& text : requested) {
    const CardRecord* card = index.card(*parseCardUUID(text));
    if (card == nullptr) {
      if (missing.insert(text).second) selection.missing.push_back(text);
    } else if (taken.insert(card).second) {
      selection.cards.push_back(card);
    }
  }
  return selection;
}

}  // namespace

ListCardLayoutsTool::ListCardLayoutsTool(std::optional<std::filesystem::path> defaultProjectURL)
    : defaultProjectURL_(std::move(defaultProjectURL)), spec_(listCardLayoutsSpec()) {}

AnyCodableValue ListCardLayoutsTool::run(const AnyCodableValue& input,
                                         const AgentToolContext&) const {
  const ListCardLayoutsRequest request = decodeRequest(input);
  const bool hasIDs = request.cardIDs && !request.cardIDs->empty();
  if (!hasIDs) {
    if (!request.scope) throw std::invalid_argument(std::string(kMissingSelectionMessage));
    if (lowercased(trimWhitespaceAndNewlines(*request.scope)) != "board") {
      throw std::invalid_argument(std::string(kUnsupportedScopeMessage));
    }
  } else {
    std::vector<std::string> invalid;
    for (const std::string& text : *request.cardIDs) {
      if (!parseCardUUID(text)) invalid.push_back(text);
    }
    if (!invalid.empty()) {
      std::string message(kInvalidIDsPrefix);
      for (size_t i = 0; i < invalid.size(); ++i) message += (i ? ", " : "") + invalid[i];
      throw std::invalid_argument(message);
    }
  }

  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  const WorkspaceProjectSnapshot snapshot = WorkspaceProjectSnapshotStore().load(projectURL);
  const SnapshotCardIndex index(snapshot);

  LayoutSelection selection;
  if (hasIDs) {
    selection = selectByIDs(*request.cardIDs, index);
  } else {
    for (const CardRecord& card : snapshot.cards) selection.cards.push_back(&card);
  }
  std::vector<LayoutItem> layouts;
  layouts.reserve(selection.cards.size());
  for (const CardRecord* card : selection.cards) {
    layouts.push_back(LayoutItem::fromCard(*card, request.includeConstraints));
  }
  return ObjectEncoder()
      .add("total", layouts.size())
      .add("layouts", layouts)
      .add("missing_card_ids", selection.missing)
      .build();
}

}  // namespace zorvik
