#include "support/fake_app/fake_board_edits.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>
#include <set>
#include <stdexcept>
#include <variant>

#include "foundation/atomic_file.h"
#include "foundation/iso8601_date.h"
#include "foundation/json/value_decoder.h"
#include "foundation/uuid.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_ref_envelope.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"
#include "workspace_store/filesystem_workspace_state.h"
#include "workspace_store/stored_cards/csv_table.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik::testing {
namespace {

constexpr std::string_view kContentFolder = "cards";

struct CardKind {
  std::string_view requested;  // the create_cards type word
  std::string_view rawValue;   // the stored kind
  double width;
  double height;
};

constexpr CardKind kKinds[] = {
    {"item", "link", 320, 400},       {"rich_text", "richText", 420, 320},
    {"table", "table", 560, 260},     {"image", "image", 400, 300},
    {"folder", "folder", 640, 520},   {"chat", "chat", 360, 480},
    {"browser", "browser", 800, 600},
};

const CardKind* kindNamed(std::string_view type) {
  for (const CardKind& kind : kKinds) {
    if (kind.requested == type) return &kind;
  }
  return nullptr;
}

const std::string* stringMember(const AnyCodableValue& object, std::string_view key) {
  const AnyCodableValue* member = object.member(key);
  return member ? member->asString() : nullptr;
}

std::optional<double> numberMember(const AnyCodableValue& object, std::string_view key) {
  const AnyCodableValue* member = object.member(key);
  return member ? member->numericValue() : std::nullopt;
}

const AnyCodableValue::Array& requiredArray(const AnyCodableValue& arguments, std::string_view key,
                                            std::string_view command) {
  const AnyCodableValue* member = arguments.member(key);
  if (!member || !member->asArray() || member->asArray()->empty()) {
    throw std::invalid_argument(std::string(command) + " requires a non-empty " + std::string(key) +
                                " array.");
  }
  return *member->asArray();
}

std::vector<std::string> stringList(const AnyCodableValue* value) {
  std::vector<std::string> result;
  if (!value || !value->asArray()) return result;
  for (const AnyCodableValue& element : *value->asArray()) {
    if (const std::string* text = element.asString()) result.push_back(*text);
  }
  return result;
}

std::vector<std::vector<std::string>> rowList(const AnyCodableValue* value) {
  std::vector<std::vector<std::string>> rows;
  if (!value || !value->asArray()) return rows;
  for (const AnyCodableValue& row : *value->asArray()) rows.push_back(stringList(&row));
  return rows;
}

AnyCodableValue resultEntry(JSONObject fields, std::string_view status, std::string message) {
  fields.set("status", std::string(status));
  fields.set("message", std::move(message));
  return fields;
}

// The project document and the content files of one edit, written together at the end.
class Board {
 public:
  explicit Board(std::filesystem::path root) : root_(std::move(root)) {
    const auto text = readFileContents(documentFile());
    if (!text) throw std::runtime_error("cannot read " + documentFile().string());
    state_ = decodeValue<FilesystemWorkspaceState>(AnyCodableValue::parse(*text));
  }

  FilesystemWorkspaceState& state() { return state_; }

  FilesystemWorkspaceEntry* find(std::string_view idText) {
    const auto id = Uuid::parse(idText);
    if (!id) return nullptr;
    for (FilesystemWorkspaceEntry& entry : state_.entries) {
      if (entry.id == *id) return &entry;
    }
    return nullptr;
  }

  void writeContent(const std::string& relativePath, const std::string& contents) {
    pendingFiles_[relativePath] = contents;
  }

  std::optional<std::string> readContent(const std::string& relativePath) const {
    if (auto pending = pendingFiles_.find(relativePath); pending != pendingFiles_.end()) {
      return pending->second;
    }
    return readFileContents(root_ / relativePath);
  }

  void removeContent(const std::string& relativePath) { removedFiles_.push_back(relativePath); }

  void save() {
    for (const auto& [path, contents] : pendingFiles_) {
      std::filesystem::create_directories((root_ / path).parent_path());
      writeFileAtomically(root_ / path, contents);
    }
    state_.updatedAt = currentDate();
    writeFileAtomically(documentFile(), state_.encode().jsonString().value_or("{}"));
    for (const std::string& path : removedFiles_) {
      std::error_code ignored;
      std::filesystem::remove(root_ / path, ignored);
    }
  }

 private:
  std::filesystem::path documentFile() const {
    return root_ / FilesystemWorkspaceState::kDocumentRelativePath;
  }

  std::filesystem::path root_;
  FilesystemWorkspaceState state_;
  std::map<std::string, std::string> pendingFiles_;
  std::vector<std::string> removedFiles_;
};

std::string contentPath(const Uuid& id, std::string_view extension) {
  return std::string(kContentFolder) + "/" + id.lowercaseString() + std::string(extension);
}

// The kind object inside an entry's payload, created when missing.
JSONObject& kindObject(FilesystemWorkspaceEntry& entry) {
  if (!entry.payload.isObject()) entry.payload = JSONObject{{"type", entry.kindRawValue}};
  JSONObject& payload = *entry.payload.asObject();
  AnyCodableValue* fields = payload.find(entry.kindRawValue);
  if (!fields || !fields->isObject()) fields = &payload.set(entry.kindRawValue, JSONObject{});
  return *fields->asObject();
}

// ---- create_cards -----------------------------------------------------------------------------

struct Placement {
  double nextX = 0;
  int64_t nextZ = 1;
};

Placement initialPlacement(const FilesystemWorkspaceState& state) {
  Placement placement;
  for (const FilesystemWorkspaceEntry& entry : state.entries) {
    if (entry.parentID) continue;
    placement.nextX =
        std::max(placement.nextX, entry.layout.position.x + entry.layout.actualWidth + 40);
    placement.nextZ = std::max(placement.nextZ, entry.layout.zIndex + 1);
  }
  return placement;
}

// The entry for one cards[] element, or the reason it cannot be made.
std::variant<FilesystemWorkspaceEntry, std::string> makeEntry(const AnyCodableValue& request,
                                                              Board& board, Placement& placement) {
  const std::string* typeText = stringMember(request, "type");
  const std::string type = typeText ? *typeText : "item";
  const CardKind* kind = kindNamed(type);
  if (!kind) return "Card type " + type + " is not supported by this application.";

  FilesystemWorkspaceEntry entry;
  entry.id = Uuid::random();
  entry.kindRawValue = std::string(kind->rawValue);
  const std::string* title = stringMember(request, "title");
  entry.title = title ? *title : "Untitled";
  entry.createdAt = currentDate();
  entry.shadowEnabled = true;
  entry.payload = JSONObject{{"type", entry.kindRawValue}};
  JSONObject& fields = kindObject(entry);

  if (const std::string* parent = stringMember(request, "parent_id");
      parent && *parent != "root" && *parent != "board" && *parent != "none") {
    const FilesystemWorkspaceEntry* folder = board.find(*parent);
    if (!folder || folder->kindRawValue != "folder") return "parent_id is not a folder card.";
    entry.parentID = folder->id;
  }

  const AnyCodableValue* size = request.member("size");
  entry.layout.actualWidth =
      size ? numberMember(*size, "width").value_or(kind->width) : kind->width;
  entry.layout.actualHeight =
      size ? numberMember(*size, "height").value_or(kind->height) : kind->height;
  const AnyCodableValue* placementRequest = request.member("placement");
  const std::string* mode = placementRequest ? stringMember(*placementRequest, "mode") : nullptr;
  const AnyCodableValue* coordinates =
      placementRequest ? placementRequest->member("coordinates") : nullptr;
  if (mode && *mode == "coordinates" && coordinates) {
    entry.layout.position = {numberMember(*coordinates, "x").value_or(0),
                             numberMember(*coordinates, "y").value_or(0)};
  } else {
    entry.layout.position = {placement.nextX, 0};
    placement.nextX += entry.layout.actualWidth + 40;
  }
  entry.layout.zIndex = placement.nextZ++;

  if (const std::string* summary = stringMember(request, "summary"))
    fields.set("summary", *summary);
  if (type == "rich_text") {
    const std::string* markdown = stringMember(request, "markdown");
    entry.relativePath = contentPath(entry.id, ".md");
    board.writeContent(*entry.relativePath, markdown ? *markdown : "");
  } else if (type == "table") {
    entry.relativePath = contentPath(entry.id, ".csv");
    board.writeContent(*entry.relativePath, renderCSV(stringList(request.member("table_columns")),
                                                      rowList(request.member("table_rows"))));
    const AnyCodableValue* headers = request.member("shows_row_headers");
    fields.set("showsRowHeaders", headers && headers->asBool() && *headers->asBool());
  } else if (type == "image") {
    const std::string* url = stringMember(request, "url");
    if (!url || url->empty()) return "Image cards require a url.";
    fields.set("url", *url);
  } else if (type == "item" || type == "browser") {
    const std::string* url = stringMember(request, "url");
    fields.set(type == "item" ? "url" : "currentURL", url ? *url : "");
    if (const std::string* note = stringMember(request, "note")) fields.set("note", *note);
  } else if (type == "folder") {
    const std::string* layout = stringMember(request, "folder_layout");
    fields.set("layout", layout ? *layout : "freeform");
  } else if (type == "chat") {
    AnyCodableValue::Array messages;
    if (const AnyCodableValue* given = request.member("messages"); given && given->asArray()) {
      messages = *given->asArray();
    }
    fields.set("messages", std::move(messages));
  }
  return entry;
}

FakeBoardEditResult createCards(Board& board, const AnyCodableValue& arguments) {
  const auto& requests = requiredArray(arguments, "cards", "create_cards");
  FakeBoardEditResult result;
  Placement placement = initialPlacement(board.state());
  AnyCodableValue::Array results;
  AnyCodableValue::Array created;
  for (size_t index = 0; index < requests.size(); ++index) {
    JSONObject fields{{"request_index", static_cast<int64_t>(index)}};
    if (!requests[index].isObject()) {
      fields.set("card_id", "");
      results.push_back(resultEntry(fields, "error", "cards[] entries must be objects."));
      ++result.failedCount;
      continue;
    }
    auto made = makeEntry(requests[index], board, placement);
    if (auto* reason = std::get_if<std::string>(&made)) {
      fields.set("card_id", "");
      results.push_back(resultEntry(fields, "error", *reason));
      ++result.failedCount;
      continue;
    }
    FilesystemWorkspaceEntry& entry = std::get<FilesystemWorkspaceEntry>(made);
    const std::string id = entry.id.uppercaseString();
    fields.set("card_id", id);
    results.push_back(resultEntry(fields, "created", "Card created."));
    created.push_back(id);
    board.state().entries.push_back(std::move(entry));
  }
  result.answer.set("created_card_ids", created);
  result.answer.set("side_effect_card_ids", AnyCodableValue::Array{});
  result.answer.set("results", std::move(results));
  result.answer.set("replayed", false);
  return result;
}

// ---- edit_cards -------------------------------------------------------------------------------

// Applies one sparse patch; the reason it cannot be applied otherwise.
std::optional<std::string> applyEdit(Board& board, FilesystemWorkspaceEntry& entry,
                                     const AnyCodableValue& edit) {
  static constexpr std::string_view kSupported[] = {"card_id",  "title",    "summary", "note",
                                                    "markdown", "item_url", "move_to"};
  for (const auto& [key, ignored] : *edit.asObject()) {
    if (std::find(std::begin(kSupported), std::end(kSupported), key) == std::end(kSupported)) {
      return "Edit key " + key + " is not supported by this application.";
    }
  }
  if (const std::string* title = stringMember(edit, "title")) entry.title = *title;
  if (const std::string* summary = stringMember(edit, "summary")) {
    kindObject(entry).set("summary", *summary);
  }
  if (const std::string* note = stringMember(edit, "note")) kindObject(entry).set("note", *note);
  if (const std::string* url = stringMember(edit, "item_url")) {
    if (entry.kindRawValue != "link") return "item_url applies to item cards only.";
    kindObject(entry).set("url", *url);
  }
  if (const std::string* markdown = stringMember(edit, "markdown")) {
    if (entry.kindRawValue != "richText") return "markdown applies to rich_text cards only.";
    if (const auto path = entry.contentPath()) {
      board.writeContent(*path, *markdown);
    } else {
      kindObject(entry).set("markdown", *markdown);
    }
  }
  if (const AnyCodableValue* center = edit.member("move_to")) {
    const auto x = numberMember(*center, "x");
    const auto y = numberMember(*center, "y");
    if (!x || !y) return "move_to needs numeric x and y.";
    entry.layout.position = {*x - entry.layout.actualWidth / 2, *y - entry.layout.actualHeight / 2};
  }
  return std::nullopt;
}

FakeBoardEditResult editCards(Board& board, const AnyCodableValue& arguments) {
  if (arguments.member("edits") && arguments.member("cards")) {
    throw std::invalid_argument("edit_cards accepts edits or cards, not both.");
  }
  const auto& edits =
      requiredArray(arguments, arguments.member("cards") ? "cards" : "edits", "edit_cards");
  FakeBoardEditResult result;
  AnyCodableValue::Array results;
  for (const AnyCodableValue& edit : edits) {
    const std::string* id = edit.isObject() ? stringMember(edit, "card_id") : nullptr;
    if (!id) throw std::invalid_argument("edit_cards edits need a card_id each.");
    result.targetCardIDs.push_back(*id);
    FilesystemWorkspaceEntry* entry = board.find(*id);
    std::optional<std::string> problem =
        entry ? applyEdit(board, *entry, edit) : std::optional<std::string>("Card not found.");
    if (problem) ++result.failedCount;
    results.push_back(resultEntry({{"card_id", *id}}, problem ? "error" : "updated",
                                  problem ? *problem : "Card updated."));
  }
  result.answer.set("results", std::move(results));
  return result;
}

// ---- delete_cards -----------------------------------------------------------------------------

FakeBoardEditResult deleteCards(Board& board, const AnyCodableValue& arguments) {
  const auto& ids = requiredArray(arguments, "card_ids", "delete_cards");
  FakeBoardEditResult result;
  AnyCodableValue::Array results;
  std::vector<Uuid> doomed;
  for (const AnyCodableValue& value : ids) {
    const std::string* id = value.asString();
    if (!id) throw std::invalid_argument("delete_cards card_ids must be strings.");
    result.targetCardIDs.push_back(*id);
    const FilesystemWorkspaceEntry* entry = board.find(*id);
    if (!entry) {
      ++result.failedCount;
      results.push_back(resultEntry({{"card_id", *id}}, "error", "Card not found."));
      continue;
    }
    doomed.push_back(entry->id);
    results.push_back(resultEntry({{"card_id", *id}}, "deleted", "Card deleted."));
  }
  // A deleted folder takes its descendants with it.
  for (size_t next = 0; next < doomed.size(); ++next) {
    for (const FilesystemWorkspaceEntry& entry : board.state().entries) {
      if (entry.parentID == doomed[next] &&
          std::find(doomed.begin(), doomed.end(), entry.id) == doomed.end()) {
        doomed.push_back(entry.id);
      }
    }
  }
  auto& entries = board.state().entries;
  for (const FilesystemWorkspaceEntry& entry : entries) {
    const auto path = entry.contentPath();
    if (path && path->starts_with(kContentFolder) &&
        std::find(doomed.begin(), doomed.end(), entry.id) != doomed.end()) {
      board.removeContent(*path);
    }
  }
  std::erase_if(entries, [&](const FilesystemWorkspaceEntry& entry) {
    return std::find(doomed.begin(), doomed.end(), entry.id) != doomed.end();
  });
  result.answer.set("results", std::move(results));
  return result;
}

// ---- resize_cards -----------------------------------------------------------------------------

FakeBoardEditResult resizeCards(Board& board, const AnyCodableValue& arguments) {
  const auto& resizes = requiredArray(arguments, "resizes", "resize_cards");
  FakeBoardEditResult result;
  AnyCodableValue::Array results;
  for (const AnyCodableValue& resize : resizes) {
    const auto positive = [&](std::string_view key) {
      const double value = numberMember(resize, key).value_or(0);
      return std::isfinite(value) && value > 0 ? value : 0.0;
    };
    const std::string* id = resize.isObject() ? stringMember(resize, "card_id") : nullptr;
    const double width = resize.isObject() ? positive("width") : 0;
    const double height = resize.isObject() ? positive("height") : 0;
    if (!id || width == 0 || height == 0) {
      throw std::invalid_argument(
          "resize_cards resizes need card_id and positive width and height.");
    }
    result.targetCardIDs.push_back(*id);
    FilesystemWorkspaceEntry* entry = board.find(*id);
    if (!entry) {
      ++result.failedCount;
      results.push_back(
          resultEntry({{"card_id", *id}, {"changed", false}}, "error", "Card not found."));
      continue;
    }
    const bool changed =
        entry->layout.actualWidth != width || entry->layout.actualHeight != height;
    entry->layout.actualWidth = width;
    entry->layout.actualHeight = height;
    results.push_back(resultEntry({{"card_id", *id},
                                   {"changed", changed},
                                   {"card_type", entry->kindRawValue},
                                   {"resize_mode", "explicit"},
                                   {"applied_width", width},
                                   {"applied_height", height}},
                                  "resized", changed ? "Card resized." : "Size unchanged."));
  }
  result.answer.set("results", std::move(results));
  return result;
}

}  // namespace

bool isFakeBoardEditCommand(std::string_view command) {
  return command == "create_cards" || command == "edit_cards" || command == "delete_cards" ||
         command == "resize_cards";
}

FakeBoardEditResult applyFakeBoardEdit(const std::filesystem::path& projectURL,
                                       std::string_view command, const AnyCodableValue& arguments) {
  if (!arguments.isObject()) {
    throw std::invalid_argument(std::string(command) + " expects a JSON object input.");
  }
  Board board(projectURL);
  FakeBoardEditResult result;
  if (command == "create_cards") {
    result = createCards(board, arguments);
  } else if (command == "edit_cards") {
    result = editCards(board, arguments);
  } else if (command == "delete_cards") {
    result = deleteCards(board, arguments);
  } else if (command == "resize_cards") {
    result = resizeCards(board, arguments);
  } else {
    throw std::invalid_argument("Unsupported board edit: " + std::string(command));
  }
  board.save();
  return result;
}

namespace {

AnyCodableValue stringArray(const std::vector<std::string>& values) {
  AnyCodableValue::Array array;
  for (const std::string& value : values) array.push_back(value);
  return array;
}

// "applied" when cards changed and none failed, "partial" when some failed besides, "failed" when
// every requested card failed, "no_effect" otherwise.
AnyCodableValue mutationOutcome(const WorkspaceProjectMutationCheckpoint& checkpoint,
                                const std::vector<std::string>& targets, int failedCount,
                                size_t resultCount) {
  std::string status = "no_effect";
  AnyCodableValue::Array reasons;
  if (failedCount > 0 && static_cast<size_t>(failedCount) == resultCount) {
    status = "failed";
    reasons.push_back("card_errors");
  } else if (failedCount > 0) {
    status = checkpoint.changedAny ? "partial" : "failed";
    reasons.push_back("card_errors");
  } else if (checkpoint.changedAny) {
    status = "applied";
  } else {
    reasons.push_back("no_state_change");
  }
  AnyCodableValue::Array effects;
  for (const WorkspaceProjectMutationCardDiff& diff : checkpoint.cardDiffs) {
    const AnyCodableValue encoded = diff.encode();
    effects.push_back(JSONObject{
        {"card_id", diff.cardID},
        {"changed", true},
        {"change_type", *encoded.member("change_type")},
        {"before_hash", diff.beforeHash ? AnyCodableValue(*diff.beforeHash) : AnyCodableValue()},
        {"after_hash", diff.afterHash ? AnyCodableValue(*diff.afterHash) : AnyCodableValue()}});
  }
  return JSONObject{{"status", status},
                    {"reason_codes", std::move(reasons)},
                    {"target_card_ids", stringArray(targets)},
                    {"changed_card_ids", stringArray(checkpoint.changedCardIDs)},
                    {"before_state_hash", checkpoint.beforeStateHash},
                    {"after_state_hash", checkpoint.afterStateHash},
                    {"card_effects", std::move(effects)}};
}

// Whether each expected card is (or, after a delete, is no longer) on the board as it now loads.
AnyCodableValue persistenceCheck(const std::filesystem::path& projectURL,
                                 const std::vector<std::string>& expected, bool expectPresent) {
  std::set<std::string> present;
  for (const CardRecord& card : WorkspaceProjectSnapshotStore().load(projectURL).cards) {
    present.insert(card.id.uppercaseString());
  }
  std::vector<std::string> verified;
  std::vector<std::string> missing;
  for (const std::string& id : expected) {
    const auto parsed = Uuid::parse(id);
    const bool isPresent = parsed && present.contains(parsed->uppercaseString());
    (isPresent == expectPresent ? verified : missing).push_back(id);
  }
  const std::string status = missing.empty()    ? "verified"
                             : verified.empty() ? "missing"
                                                : "partial";
  return JSONObject{{"status", status},
                    {"expected_card_ids", stringArray(expected)},
                    {"verified_card_ids", stringArray(verified)},
                    {"missing_card_ids", stringArray(missing)},
                    {"message", missing.empty() ? "All cards verified on disk."
                                                : "Some cards did not verify on disk."}};
}

std::mutex mutationMutex;
std::map<std::string, AnyCodableValue> replayedCreates;  // idempotency key -> answer

}  // namespace

AnyCodableValue performFakeBoardMutation(const std::filesystem::path& projectURL,
                                         std::string_view command,
                                         const AnyCodableValue& arguments) {
  std::lock_guard lock(mutationMutex);
  const std::string* key = command == "create_cards" && arguments.isObject()
                               ? stringMember(arguments, "idempotency_key")
                               : nullptr;
  if (key) {
    if (auto earlier = replayedCreates.find(*key); earlier != replayedCreates.end()) {
      AnyCodableValue replay = earlier->second;
      replay.asObject()->set("replayed", true);
      replay.asObject()->find("mutation_outcome")->asObject()->set("status", "no_effect");
      return replay;
    }
  }
  const WorkspaceProjectMutationCheckpointStore checkpoints;
  const CaptureContext context = checkpoints.beginCapture(projectURL, std::string(command), {});
  FakeBoardEditResult edit = applyFakeBoardEdit(projectURL, command, arguments);
  const WorkspaceProjectMutationCheckpoint checkpoint = checkpoints.finishCapture(context);

  JSONObject answer = std::move(edit.answer);
  const AnyCodableValue* results = answer.find("results");
  const size_t resultCount = results && results->asArray() ? results->asArray()->size() : 0;
  std::vector<std::string> targets = edit.targetCardIDs;
  if (command == "create_cards") targets = stringList(answer.find("created_card_ids"));
  answer.set("mutation_outcome",
             mutationOutcome(checkpoint, targets, edit.failedCount, resultCount));
  answer.set("project_checkpoint_ref",
             WorkspaceProjectMutationCheckpointRefEnvelope::ok(checkpoint).encode());
  if (command == "create_cards" || command == "delete_cards") {
    answer.set("persistence", persistenceCheck(projectURL, targets, command == "create_cards"));
    answer.set("idempotency_key", key ? AnyCodableValue(*key) : AnyCodableValue());
  }
  AnyCodableValue value = std::move(answer);
  if (key && edit.failedCount == 0) replayedCreates.emplace(*key, value);
  return value;
}

}  // namespace zorvik::testing
