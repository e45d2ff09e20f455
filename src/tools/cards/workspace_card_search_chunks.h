// Search chunks: the small labelled pieces of text that the card search tools look at.
//
// A card gives a "Title" chunk, then the chunks of its type, in this order:
//   browser    "Browser URL", "Page Title", "Summary"
//   html       "Summary", "HTML", "Remote Assets" ("allowed" or "blocked")
//   folder     "Summary", "Layout"
//   video      "Video URL"
//   table      "Columns", then "Row 1", "Row 2", ... for the first maxTableRows rows; titles and
//              cells are limited to the first maxTableColumns columns and rendered as table rows
//   rich text  "Paragraph 1", ... for the first maxRichTextLines paragraphs (see below)
//   chat       "Message n" for the most recent maxChatMessages messages, n counting from the
//              chat's first message; the text is the message text
//   image      "Image URL", "Summary"
//   link       "Source" ("local" or "remote", by the kind of url), "Summary" (the link's own
//   summary), "Note", one
//              "Field" chunk per row item and then per available field ("label: value", or the
//              label alone when the value is empty), and last "Summary" with the card's summary
//              when it says something the link's own summary does not
// A "Summary" chunk other than the link's first is the card's summary, or the payload's when the
// card has none. Rich text is split into paragraphs at blank (white-space-only) lines after CR LF
// is read as LF; a paragraph keeps its lines joined by LF, and only non-empty paragraphs are
// numbered. Every chunk's text is cut to maxChunkChars characters by the toolkit's truncate;
// chunks whose text is empty or only white space are left out. Pure functions, thread-safe.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class ValueDecoder;

// JSON keys `label` and `text`, both required.
struct WorkspaceCardSearchChunk {
  std::string label;
  std::string text;

  static WorkspaceCardSearchChunk decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardSearchChunk&) const = default;
};

// The bounds of the work done per card. Every search tool uses the defaults.
struct WorkspaceCardSearchOptions {
  int maxTableRows = 50;
  int maxTableColumns = 10;
  int maxRichTextLines = 80;  // paragraphs
  int maxChatMessages = 30;
  int maxChunkChars = 800;
};

std::vector<WorkspaceCardSearchChunk> searchChunks(const WorkspaceCard& card,
                                                   const WorkspaceCardSearchOptions& options);

// The same chunks, in the same order, handed to `visit` one at a time without being collected.
// Both views are valid only during the call; texts that need no cut are views of the card itself.
using SearchChunkVisitor = std::function<void(std::string_view label, std::string_view text)>;
void forEachSearchChunk(const WorkspaceCard& card, const WorkspaceCardSearchOptions& options,
                        const SearchChunkVisitor& visit);

}  // namespace zorvik
