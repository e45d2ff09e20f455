#include "workspace_store/compiler/workspace_project_checks.h"

#include <cmath>
#include <optional>
#include <string>

#include "foundation/text.h"
#include "workspace_store/compiler/compile_card_kind.h"
#include "workspace_store/compiler/url_syntax.h"

namespace zorvik {
namespace {

using Diagnostics = std::vector<WorkspaceCompileDiagnostic>;

WorkspaceCompileDiagnostic cardDiagnostic(const CardRecord& card, bool runtimeManaged,
                                          WorkspaceCompileSeverity severity, std::string code,
                                          std::string message,
                                          std::optional<std::string> hint = std::nullopt) {
  return WorkspaceCompileDiagnostic{
      .severity = severity,
      .code = std::move(code),
      .message = std::move(message),
      .path = card.path,
      .cardID = card.id,
      .hint = std::move(hint),
      .owner = runtimeManaged ? WorkspaceCompileDiagnosticOwner::runtime
                              : WorkspaceCompileDiagnosticOwner::user,
      .actionability = runtimeManaged ? WorkspaceCompileDiagnosticActionability::reportOnly
                                      : WorkspaceCompileDiagnosticActionability::fixable,
  };
}

WorkspaceCompileDiagnostic cardError(const CardRecord& card, std::string code, std::string message,
                                     std::optional<std::string> hint = std::nullopt) {
  return cardDiagnostic(card, isRuntimeManagedPayload(card.payload),
                        WorkspaceCompileSeverity::error, std::move(code), std::move(message),
                        std::move(hint));
}

WorkspaceCompileDiagnostic cardWarning(const CardRecord& card, std::string code,
                                       std::string message) {
  return cardDiagnostic(card, isRuntimeManagedPayload(card.payload),
                        WorkspaceCompileSeverity::warning, std::move(code), std::move(message));
}

bool isValidSide(const std::string& side) {
  return side == "left" || side == "right" || side == "top" || side == "bottom";
}

// Whether the payload's `table.rows` is an array of arrays of more than one length.
bool hasRaggedTableRows(const AnyCodableValue& payload) {
  const AnyCodableValue* table = payload.member("table");
  const AnyCodableValue* rows = table ? table->member("rows") : nullptr;
  const AnyCodableValue::Array* list = rows ? rows->asArray() : nullptr;
  if (!list) return false;
  std::optional<size_t> width;
  bool ragged = false;
  for (const AnyCodableValue& row : *list) {
    const AnyCodableValue::Array* cells = row.asArray();
    if (!cells) return false;
    if (width && *width != cells->size()) ragged = true;
    width = cells->size();
  }
  return ragged;
}

// The URL text of a link payload, else of an image payload, with the message for it.
struct CardURL {
  const std::string* text;
  const char* message;
};

std::optional<CardURL> cardURL(const AnyCodableValue& payload) {
  if (const AnyCodableValue* link = payload.member("link")) {
    if (const AnyCodableValue* url = link->member("url"); url && url->asString()) {
      return CardURL{url->asString(), "Item card URL appears malformed."};
    }
  }
  if (const AnyCodableValue* image = payload.member("image")) {
    if (const AnyCodableValue* url = image->member("url"); url && url->asString()) {
      return CardURL{url->asString(), "Image card URL appears malformed."};
    }
  }
  return std::nullopt;
}

// The last segment of a folder path, "a/b/" and "a/b" alike.
std::string_view lastSegment(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  const size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace

WorkspaceProjectChecks::WorkspaceProjectChecks(const WorkspaceProjectSnapshot& snapshot)
    : snapshot_(snapshot) {
  const auto& cards = snapshot_.cards;
  indexByID_.reserve(cards.size());
  kinds_.reserve(cards.size());
  for (size_t i = 0; i < cards.size(); ++i) {
    indexByID_.insert_or_assign(cards[i].id, i);
    kinds_.push_back(compileCardKind(cards[i].payload));
    if (kinds_.back() == "folder") folderIDs_.insert(cards[i].id);
  }
}

const CardRecord* WorkspaceProjectChecks::card(const Uuid& id) const {
  const auto found = indexByID_.find(id);
  return found == indexByID_.end() ? nullptr : &snapshot_.cards[found->second];
}

std::string_view WorkspaceProjectChecks::kind(const CardRecord& card) const {
  return kinds_[static_cast<size_t>(&card - snapshot_.cards.data())];
}

void WorkspaceProjectChecks::appendAll(Diagnostics& out) const {
  appendStructure(out);
  appendLayouts(out);
  appendConstraints(out);
  appendGroups(out);
  appendWarnings(out);
}

void WorkspaceProjectChecks::appendStructure(Diagnostics& out) const {
  std::unordered_set<Uuid> seen;
  seen.reserve(snapshot_.cards.size());
  for (const CardRecord& current : snapshot_.cards) {
    if (!seen.insert(current.id).second) {
      out.push_back(cardError(current, "structure.duplicate_id", "Duplicate card id found."));
    }
    if (!current.parentID) continue;
    const std::string parentText = current.parentID->uppercaseString();
    const CardRecord* parent = card(*current.parentID);
    if (!parent) {
      out.push_back(cardError(current, "structure.parent_missing", "Parent card does not exist.",
                              "Missing parent id: " + parentText));
    } else if (kind(*parent) != "folder") {
      out.push_back(cardError(current, "structure.parent_not_folder",
                              "Parent card exists but is not a folder.",
                              "Parent id: " + parentText));
    } else if (!folderIDs_.contains(*current.parentID)) {
      out.push_back(cardError(current, "structure.parent_folder_invalid",
                              "Parent folder is missing folder payload semantics.",
                              "Parent id: " + parentText));
    }
  }
  appendCycles(out);
}

void WorkspaceProjectChecks::appendCycles(Diagnostics& out) const {
  // Every card reached is marked with the walk that reached it first and its position in that
  // walk; a walk that meets a card of its own walk has closed a cycle, one that meets a card of an
  // earlier walk stops there, so each cycle is reported once.
  struct Mark {
    size_t walk;
    size_t position;
  };
  std::unordered_map<Uuid, Mark> marks;
  marks.reserve(snapshot_.cards.size());
  std::vector<const CardRecord*> walk;
  for (size_t walkNumber = 0; walkNumber < snapshot_.cards.size(); ++walkNumber) {
    walk.clear();
    const CardRecord* current = &snapshot_.cards[walkNumber];
    while (current) {
      const auto [mark, isNew] = marks.try_emplace(current->id, Mark{walkNumber, walk.size()});
      if (!isNew) {
        if (mark->second.walk == walkNumber) {
          bool runtimeManaged = false;
          for (size_t i = mark->second.position; i < walk.size(); ++i) {
            runtimeManaged = runtimeManaged || isRuntimeManagedPayload(walk[i]->payload);
          }
          out.push_back(cardDiagnostic(*walk.back(), runtimeManaged,
                                       WorkspaceCompileSeverity::error, "structure.parent_cycle",
                                       "Detected parent cycle in folder hierarchy."));
        }
        break;
      }
      walk.push_back(current);
      current = current->parentID ? card(*current->parentID) : nullptr;
    }
  }
}

void WorkspaceProjectChecks::appendLayouts(Diagnostics& out) const {
  for (const CardRecord& current : snapshot_.cards) {
    const Frame& frame = current.frame;
    if (!(std::isfinite(frame.width) && std::isfinite(frame.height) && frame.width > 0 &&
          frame.height > 0)) {
      out.push_back(cardError(current, "layout.invalid_size",
                              "Card dimensions must be positive finite values."));
    }
    if (!std::isfinite(frame.x) || !std::isfinite(frame.y)) {
      out.push_back(cardError(current, "layout.invalid_position", "Card position must be finite."));
    }
  }
}

void WorkspaceProjectChecks::appendConstraints(Diagnostics& out) const {
  for (const CardRecord& current : snapshot_.cards) {
    if (!current.snapConstraints) continue;
    for (const SnapConstraint& constraint : current.snapConstraints->all()) {
      if (!card(constraint.anchorId)) {
        out.push_back(cardError(current, "constraints.anchor_missing",
                                "snapConstraints anchor id does not exist.",
                                "Missing anchor id: " + constraint.anchorId.uppercaseString()));
      }
      if (!isValidSide(constraint.side)) {
        out.push_back(
            cardError(current, "constraints.side_invalid", "snapConstraints side is invalid."));
      }
      if (!std::isfinite(constraint.crossOffset) || !std::isfinite(constraint.gap)) {
        out.push_back(cardError(current, "constraints.value_invalid",
                                "snapConstraints offsets must be finite numbers."));
      }
    }
  }
}

void WorkspaceProjectChecks::appendGroups(Diagnostics& out) const {
  // Children by parent, built only when some folder has group stacks.
  std::unordered_map<Uuid, std::unordered_set<Uuid>> childrenByParent;
  bool childrenBuilt = false;
  for (const CardRecord& folder : snapshot_.cards) {
    if (folder.groupStacks.empty() || kind(folder) != "folder") continue;
    if (!childrenBuilt) {
      for (const CardRecord& child : snapshot_.cards) {
        if (child.parentID) childrenByParent[*child.parentID].insert(child.id);
      }
      childrenBuilt = true;
    }
    const auto found = childrenByParent.find(folder.id);
    const std::unordered_set<Uuid> none;
    const std::unordered_set<Uuid>& children =
        found == childrenByParent.end() ? none : found->second;
    for (const GroupStack& stack : folder.groupStacks) {
      if (!card(stack.anchorId)) {
        out.push_back(cardError(folder, "group.anchor_missing",
                                "groupStacks anchor card is missing.",
                                "Missing anchor id: " + stack.anchorId.uppercaseString()));
      }
      std::unordered_set<Uuid> seen;
      for (const Uuid& member : stack.orderedIds) {
        if (!seen.insert(member).second) {
          out.push_back(cardError(folder, "group.ordered_id_duplicate",
                                  "groupStacks orderedIds contains duplicates."));
        } else if (!children.contains(member)) {
          out.push_back(cardError(folder, "group.child_mismatch",
                                  "groupStacks references a card not owned by this folder.",
                                  "Card id: " + member.uppercaseString()));
        }
      }
    }
  }
}

void WorkspaceProjectChecks::appendWarnings(Diagnostics& out) const {
  for (const CardRecord& current : snapshot_.cards) {
    if (hasRaggedTableRows(current.payload)) {
      out.push_back(cardWarning(current, "quality.table_row_shape",
                                "Table rows have non-uniform column counts."));
    }
    if (const std::optional<CardURL> url = cardURL(current.payload)) {
      const std::string trimmed = trimWhitespaceAndNewlines(*url->text);
      if (!trimmed.empty() && !isParsableURL(trimmed)) {
        out.push_back(cardWarning(current, "quality.url_malformed", url->message));
      }
    }
  }

  std::unordered_set<std::string> folderNames;
  for (const Uuid& id : folderIDs_) folderNames.insert(id.lowercaseString());
  for (const FolderRecord& folder : snapshot_.folders) {
    if (folder.path == ".") continue;
    if (folderNames.contains(lowercased(lastSegment(folder.path)))) continue;
    out.push_back(WorkspaceCompileDiagnostic{
        .severity = WorkspaceCompileSeverity::warning,
        .code = "folder.orphan_directory",
        .message = "Folder directory exists but no matching folder card id was found.",
        .path = folder.path,
        .hint = "Directory name should match a folder card UUID.",
        .owner = WorkspaceCompileDiagnosticOwner::user,
        .actionability = WorkspaceCompileDiagnosticActionability::fixable,
    });
  }
}

}  // namespace zorvik
