#include "tools/slides/slide_state_reader.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "foundation/text.h"
#include "tools/slides/folder_payload.h"
#include "tools/slides/slide_card_type.h"

namespace zorvik {
namespace {

struct SlideGroup {
  const CardRecord* card = nullptr;
  FolderPayload folder;
};

class SlideStateBuilder {
 public:
  SlideStateBuilder(const WorkspaceProjectSnapshot& snapshot, const SlideTemplateCatalog& catalog)
      : snapshot_(snapshot), catalog_(catalog) {
    for (const CardRecord& card : snapshot.cards) cardsById_.emplace(card.id, &card);
  }

  // The slide group a requested id names, or nullopt.
  std::optional<SlideGroup> group(const std::string& requestedId) const {
    const std::optional<Uuid> id = Uuid::parse(trimWhitespaceAndNewlines(requestedId));
    if (!id) return std::nullopt;
    auto found = cardsById_.find(*id);
    if (found == cardsById_.end()) return std::nullopt;
    return slideGroup(*found->second);
  }

  static std::optional<SlideGroup> slideGroup(const CardRecord& card) {
    std::optional<FolderPayload> folder = FolderPayload::fromRuntimePayload(card.payload);
    if (!folder || !folder->isSlideGroup()) return std::nullopt;
    return SlideGroup{&card, std::move(*folder)};
  }

  SlideState build(const SlideGroup& group, bool includeChildFrames) const {
    const CardRecord& card = *group.card;
    const FolderPayload& folder = group.folder;
    SlideState state;
    state.groupId = card.id;
    state.title = card.title;
    state.templateId = folder.slideTemplateId;
    state.themeId = folder.slideThemeId;
    state.groupKind = folder.groupKind;
    state.layoutMode = folder.slideLayoutMode;
    state.slideVersion = folder.slideVersion;
    state.slideUpdatedAt = folder.slideUpdatedAt;
    state.groupFrame = card.frame;

    const SlideTemplateSpec* spec =
        folder.slideTemplateId ? catalog_.templateWithId(*folder.slideTemplateId) : nullptr;
    if (spec) {
      state.templateFamily = spec->templateFamily;
      for (const SlideTemplateSlotSpec& slot : spec->slots) {
        SlotState slotState{.slotId = slot.id, .slotRole = slot.role, .required = slot.required};
        const bool bound = bind(slotState, folder, card.id);
        if (slot.required && !bound) state.unresolvedSlots.push_back(slot.id);
        state.slots.push_back(std::move(slotState));
        state.slotConstraints.push_back({slot.id, slot.overflowPolicy, slot.priority,
                                         slot.minWidthFactor, slot.maxWidthFactor,
                                         slot.minHeightFactor, slot.maxHeightFactor});
      }
    }
    for (const auto& [slotId, cardId] : folder.slideSlotBindings) {
      if (spec && spec->slot(slotId)) continue;
      SlotState slotState{.slotId = slotId};
      bind(slotState, folder, card.id);
      state.slots.push_back(std::move(slotState));
    }

    if (includeChildFrames) {
      state.childFrames.emplace();
      for (const CardRecord& child : snapshot_.cards) {
        if (child.parentID != card.id) continue;
        state.childFrames->push_back({child.id, cardTypeWord(child), child.frame});
      }
    }
    return state;
  }

 private:
  static std::optional<std::string> cardTypeWord(const CardRecord& card) {
    const std::optional<WorkspaceCardType> type = runtimePayloadCardType(card.payload);
    if (!type) return std::nullopt;
    return std::string(slideCardTypeWord(*type));
  }

  // Fills the card side of `slot` from the group's binding; true when it names a card of the
  // project.
  bool bind(SlotState& slot, const FolderPayload& folder, const Uuid& groupId) const {
    auto binding = folder.slideSlotBindings.find(slot.slotId);
    if (binding == folder.slideSlotBindings.end()) return false;
    const std::optional<Uuid> cardId = Uuid::parse(trimWhitespaceAndNewlines(binding->second));
    slot.cardId = cardId ? cardId->uppercaseString() : binding->second;
    slot.inGroup = false;
    if (!cardId) return false;
    auto found = cardsById_.find(*cardId);
    if (found == cardsById_.end()) return false;
    const CardRecord& card = *found->second;
    slot.cardType = cardTypeWord(card);
    slot.inGroup = card.parentID == groupId;
    slot.frame = card.frame;
    return true;
  }

  const WorkspaceProjectSnapshot& snapshot_;
  const SlideTemplateCatalog& catalog_;
  std::unordered_map<Uuid, const CardRecord*> cardsById_;
};

}  // namespace

SlideStateReport readSlideStates(const WorkspaceProjectSnapshot& snapshot,
                                 const SlideTemplateCatalog& catalog,
                                 const std::vector<std::string>& groupIds,
                                 bool includeChildFrames) {
  const SlideStateBuilder builder(snapshot, catalog);
  SlideStateReport report;
  if (groupIds.empty()) {
    for (const CardRecord& card : snapshot.cards) {
      if (auto group = SlideStateBuilder::slideGroup(card)) {
        report.slides.push_back(builder.build(*group, includeChildFrames));
      }
    }
    return report;
  }

  std::unordered_set<Uuid> reported;
  for (const std::string& requestedId : groupIds) {
    std::optional<SlideGroup> group = builder.group(requestedId);
    if (!group) {
      if (std::ranges::find(report.missingGroupIds, requestedId) == report.missingGroupIds.end()) {
        report.missingGroupIds.push_back(requestedId);
      }
      continue;
    }
    if (reported.insert(group->card->id).second) {
      report.slides.push_back(builder.build(*group, includeChildFrames));
    }
  }
  return report;
}

}  // namespace zorvik
