// WorkspaceCardToolkit: stateless operations that turn a WorkspaceCard into text or typed slices
// cut to size, for the agent tools that read the board.
//
// Nothing here throws for range or selector mistakes: a range outside the data is clamped, and a
// selector that fails shows up as an error word in the answer ("column_not_found", "empty_match",
// "row_out_of_range"). Characters are user-perceived characters (grapheme clusters) except in html
// source windows, which count UTF-16 units. Ranges are 1-based and inclusive; the empty range is
// {0, 0}. All functions are pure and thread-safe (boardResourceURL reads the file system).
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/uuid.h"
#include "tools/cards/workspace_card_content_payload.h"
#include "tools/cards/workspace_card_content_request.h"
#include "tools/cards/workspace_card_context.h"
#include "tools/cards/workspace_card_metadata_payload.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

struct WorkspaceCardLineSlice {
  std::string text;  // the selected lines joined with LF
  WorkspaceCardRange range;
};

struct WorkspaceCardMessageSlice {
  std::vector<WorkspaceChatMessage> messages;
  WorkspaceCardRange range;
};

struct WorkspaceHTMLSourceSlice {
  std::string text;
  WorkspaceHTMLSourceWindow window;
};

// Who owns a card and how an agent may change it.
struct WorkspaceCardOwnership {
  std::string owner;  // "user" or "runtime"
  bool runtimeManaged = false;
  std::string editPolicy;  // "file_editable", "tool_only" or "read_only"

  bool operator==(const WorkspaceCardOwnership&) const = default;
};

class WorkspaceCardToolkit {
 public:
  // The card's content in the request's mode: full gives contextText, summary gives summaryText,
  // both cut to request.maxChars; type_specific gives typeSpecificContent.
  static WorkspaceCardContentPayload content(const WorkspaceCard& card,
                                             const WorkspaceCardContentRequest& request,
                                             const WorkspaceCardContext& context);

  // Typed content for the card's type, shaped by request.typeOptions (the options of other types
  // are ignored). Text fields are cut to the type option's max_chars, else request.maxChars.
  // Browser and video cards have no typed record; their `text` is contextText, cut likewise.
  static WorkspaceCardContentPayload typeSpecificContent(const WorkspaceCard& card,
                                                         const WorkspaceCardContentRequest& request,
                                                         const WorkspaceCardContext& context);

  static WorkspaceCardMetadataPayload metadata(const WorkspaceCard& card,
                                               const WorkspaceCardContext& context);

  // Absent or below 1, or a text that fits: unchanged. Otherwise the first maxChars - 1
  // characters and "…" (just "…" for 1).
  static std::string truncate(std::string_view text, std::optional<int64_t> maxChars);
  // Where truncate cuts: the byte length of the kept characters ("…" follows them), or nullopt
  // when the text stays unchanged.
  static std::optional<size_t> truncationLength(std::string_view text,
                                                std::optional<int64_t> maxChars);

  // The card's own summary when not empty, else a one-line description by type.
  static std::string summaryText(const WorkspaceCard& card);

  // A plain text rendering of the whole card, one fact per line ("Title: ", "Summary: ", ...);
  // folders list their children with their summaries.
  static std::string contextText(const WorkspaceCard& card, const WorkspaceCardContext& context);

  // Cells joined with " | ", from any range of string-like cells (a list of strings, a table
  // row). The second form writes the row into `row`, replacing what it held.
  template <class Cells>
  static std::string renderRow(const Cells& cells) {
    std::string row;
    renderRow(cells, row);
    return row;
  }
  template <class Cells>
  static void renderRow(const Cells& cells, std::string& row) {
    size_t length = 0;
    for (std::string_view cell : cells) length += cell.size() + 3;
    row.clear();
    row.reserve(length);
    bool first = true;
    for (std::string_view cell : cells) {
      if (!first) row += " | ";
      row += cell;
      first = false;
    }
  }

  // The 1-based inclusive range of `range` within 1...total, at most maxCount long (when maxCount
  // is at least 1). A range whose start is above 1 and whose end is below 1 reads as the first
  // `start` items. Both ends are set in the result; the empty range is {0, 0}.
  static WorkspaceCardRange clampRange(int64_t total,
                                       const std::optional<WorkspaceCardRange>& range,
                                       std::optional<int64_t> maxCount);

  // Lines (CR LF read as LF) by options.lineRange and options.maxLines. Not cut by max_chars.
  static WorkspaceCardLineSlice sliceLines(std::string_view text,
                                           const WorkspaceCardRichTextOptions& options);

  // The last options.lastN messages when that is at least 1, else options.messageRange. Message
  // texts are returned whole.
  static WorkspaceCardMessageSlice sliceMessages(const std::vector<WorkspaceChatMessage>& messages,
                                                 const WorkspaceCardChatOptions& options);

  // A window of `text` in UTF-16 units: start in 0...length (default 0), end in start...length
  // (default length), at most maxChars units when maxChars is at least 1.
  static WorkspaceHTMLSourceSlice sliceHTMLSource(
      std::string_view text, const std::optional<WorkspaceCardRange>& sourceRange,
      std::optional<int64_t> maxChars);

  // Trimmed, white space runs made one blank, lower-cased.
  static std::string normalizeColumnName(std::string_view name);

  // The 0-based index of the column `name` designates among `columns` (titles; `total` is the
  // table's column count, which may exceed the titles): a 1-based number in 1...total, else an
  // exact normalised title, a lower-cased title, a title containing the name or contained in it,
  // and last the aliases of the well-known columns status, state, title, name, priority and
  // severity. nullopt when nothing matches.
  static std::optional<size_t> resolveColumnIndex(std::string_view name,
                                                  const std::vector<std::string>& columns,
                                                  size_t total);

  // For wide tables: the 0-based indices of the first id, title/name, status/state, priority and
  // severity columns (English and Russian titles), in that order, each once; empty when none.
  static std::vector<size_t> autoSelectColumnIndices(const std::vector<std::string>& columns);

  // Compares trimmed texts, lower-cased unless caseSensitive (default false), by mode (default
  // equals).
  static bool matchesQuery(std::string_view value, std::string_view match,
                           std::optional<WorkspaceCardTableMatchMode> mode,
                           std::optional<bool> caseSensitive);

  // matchesQuery on the row's cell in `columnIndex` (0-based; a missing cell is empty).
  static bool matchesFilter(TableRows::Row row, size_t columnIndex,
                            const WorkspaceCardTableRowFilter& filter);

  // For image cards whose url is a file under the project's "resources" folder, given as a file
  // URL or as a project-relative "resources/..." path, and that exists:
  // "zorvik-resource://resources/<percent-encoded relative path>". nullopt otherwise, and always
  // without a project URL.
  static std::optional<std::string> boardResourceURL(const WorkspaceCard& card,
                                                     const WorkspaceCardContext& context);

  // Invisible chat cards belong to the runtime (read_only); other chats are the user's but only
  // tools edit them (tool_only); every other card is the user's and file_editable.
  static WorkspaceCardOwnership ownership(const WorkspaceCard& card);

  // "zorvik://project/card/<UPPER-CASE UUID>?path=<percent-encoded project path>"; only RFC 3986
  // unreserved characters and "/" stay unescaped in the path.
  static std::string deepLinkURL(const Uuid& cardID, const std::filesystem::path& projectURL);

  // "local" for a file URL or an absolute path, "remote" for an http(s) URL, else the payload's
  // own source.
  static std::string linkSourceWord(const WorkspaceLinkPayload& payload);

  // The gallery's active image, images[0] when the index is out of range, nullopt without images.
  static std::optional<std::string> primaryImage(const WorkspaceLinkPayload& payload);

 private:
  static WorkspaceTableContent tableContent(const WorkspaceTablePayload& table,
                                            const WorkspaceCardTableOptions& options,
                                            std::optional<int64_t> maxChars);
};

}  // namespace zorvik
