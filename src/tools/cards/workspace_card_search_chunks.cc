#include "tools/cards/workspace_card_search_chunks.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <variant>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

// Hands the chunks to the visitor: blank texts are skipped and long ones cut, in buffers reused
// from chunk to chunk.
class ChunkEmitter {
 public:
  ChunkEmitter(const WorkspaceCardSearchOptions& options, const SearchChunkVisitor& visit)
      : options_(options), visit_(visit) {}

  void add(std::string_view label, std::string_view text) {
    if (trimmedView(text).empty()) return;
    const std::optional<size_t> kept =
        WorkspaceCardToolkit::truncationLength(text, options_.maxChunkChars);
    if (!kept) {
      visit_(label, text);
      return;
    }
    writeCut(text, *kept, cut_);
    visit_(label, cut_);
  }
  void addOptional(std::string_view label, const std::optional<std::string>& text) {
    if (text) add(label, *text);
  }
  // "Row 3", "Paragraph 12", ...: the label is `prefix` and the number.
  void addNumbered(std::string_view prefix, size_t number, std::string_view text) {
    label_.assign(prefix);
    label_ += std::to_string(number);
    add(label_, text);
  }
  // A buffer the caller may build a chunk's text in; add() does not touch it.
  std::string& scratch() { return scratch_; }

 private:
  const WorkspaceCardSearchOptions& options_;
  const SearchChunkVisitor& visit_;
  std::string cut_;
  std::string label_;
  std::string scratch_;
};

size_t limitOf(int value) { return value > 0 ? static_cast<size_t>(value) : 0; }

std::span<const std::string> firstColumns(const std::vector<std::string>& cells,
                                          size_t maxColumns) {
  return std::span<const std::string>(cells).first(std::min(cells.size(), maxColumns));
}

// Paragraphs are runs of non-blank lines; blank lines only separate them. Each paragraph goes to
// `visit` as one text, its lines joined by LF: a view of the markdown itself unless a CR has to go.
void forEachParagraph(std::string_view markdown, size_t limit, std::string& joined,
                      const std::function<void(size_t number, std::string_view text)>& visit) {
  size_t count = 0;
  size_t paragraphStart = 0;
  size_t paragraphEnd = std::string_view::npos;  // npos: no paragraph open
  auto close = [&] {
    if (paragraphEnd == std::string_view::npos) return;
    std::string_view paragraph = markdown.substr(paragraphStart, paragraphEnd - paragraphStart);
    if (paragraph.find('\r') != std::string_view::npos) {
      joined.clear();
      for (size_t start = 0; start <= paragraph.size();) {
        size_t end = std::min(paragraph.find('\n', start), paragraph.size());
        std::string_view line = paragraph.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (start > 0) joined += '\n';
        joined += line;
        start = end + 1;
      }
      paragraph = joined;
    }
    visit(++count, paragraph);
    paragraphEnd = std::string_view::npos;
  };
  size_t start = 0;
  while (start <= markdown.size() && count < limit) {
    size_t end = markdown.find('\n', start);
    if (end == std::string_view::npos) end = markdown.size();
    std::string_view line = markdown.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (trimmedView(line).empty()) {
      close();
    } else {
      if (paragraphEnd == std::string_view::npos) paragraphStart = start;
      paragraphEnd = start + line.size();
    }
    start = end + 1;
  }
  if (count < limit) close();
}

std::optional<std::string> cardSummary(const WorkspaceCard& card) {
  return card.summary ? card.summary : card.payload.summary();
}

void addLinkChunks(const WorkspaceCard& card, const WorkspaceLinkPayload& link,
                   ChunkEmitter& chunks) {
  chunks.add("Source", WorkspaceCardToolkit::linkSourceWord(link));
  chunks.addOptional("Summary", link.summary);
  chunks.add("Note", link.note);
  for (const auto* items : {&link.rowItems, &link.availableFields}) {
    for (const WorkspaceRowItem& item : *items) {
      const std::string value = item.value();
      if (value.empty()) {
        chunks.add("Field", item.label);
        continue;
      }
      std::string& field = chunks.scratch();
      field.assign(item.label);
      field += ": ";
      field += value;
      chunks.add("Field", field);
    }
  }
  if (card.summary && card.summary != link.summary) chunks.addOptional("Summary", card.summary);
}

void addTableChunks(const WorkspaceTablePayload& table, const WorkspaceCardSearchOptions& options,
                    ChunkEmitter& chunks) {
  const size_t maxColumns = limitOf(options.maxTableColumns);
  std::string& row = chunks.scratch();
  WorkspaceCardToolkit::renderRow(firstColumns(table.columns, maxColumns), row);
  chunks.add("Columns", row);
  const size_t rowCount = std::min(table.rows.size(), limitOf(options.maxTableRows));
  for (size_t index = 0; index < rowCount; ++index) {
    WorkspaceCardToolkit::renderRow(table.rows[index].first(maxColumns), row);
    chunks.addNumbered("Row ", index + 1, row);
  }
}

void addChatChunks(const WorkspaceChatPayload& chat, const WorkspaceCardSearchOptions& options,
                   ChunkEmitter& chunks) {
  const size_t count = std::min(chat.messages.size(), limitOf(options.maxChatMessages));
  for (size_t index = chat.messages.size() - count; index < chat.messages.size(); ++index) {
    chunks.addNumbered("Message ", index + 1, chat.messages[index].text);
  }
}

}  // namespace

WorkspaceCardSearchChunk WorkspaceCardSearchChunk::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("label"), object.required<std::string>("text")};
}

AnyCodableValue WorkspaceCardSearchChunk::encode() const {
  return ObjectEncoder().add("label", label).add("text", text).build();
}

std::vector<WorkspaceCardSearchChunk> searchChunks(const WorkspaceCard& card,
                                                   const WorkspaceCardSearchOptions& options) {
  std::vector<WorkspaceCardSearchChunk> chunks;
  forEachSearchChunk(card, options, [&](std::string_view label, std::string_view text) {
    chunks.push_back({std::string(label), std::string(text)});
  });
  return chunks;
}

void forEachSearchChunk(const WorkspaceCard& card, const WorkspaceCardSearchOptions& options,
                        const SearchChunkVisitor& visit) {
  ChunkEmitter chunks(options, visit);
  chunks.add("Title", card.title);
  std::visit(
      [&](const auto& payload) {
        using Payload = std::decay_t<decltype(payload)>;
        if constexpr (std::is_same_v<Payload, WorkspaceBrowserPayload>) {
          chunks.add("Browser URL", payload.currentURL);
          chunks.addOptional("Page Title", payload.pageTitle);
          chunks.addOptional("Summary", cardSummary(card));
        } else if constexpr (std::is_same_v<Payload, WorkspaceHTMLPayload>) {
          chunks.addOptional("Summary", cardSummary(card));
          chunks.add("HTML", payload.html);
          chunks.add("Remote Assets", payload.allowRemoteAssets ? "allowed" : "blocked");
        } else if constexpr (std::is_same_v<Payload, WorkspaceFolderPayload>) {
          chunks.addOptional("Summary", cardSummary(card));
          chunks.add("Layout", payload.layout);
        } else if constexpr (std::is_same_v<Payload, WorkspaceVideoPayload>) {
          chunks.add("Video URL", payload.url);
        } else if constexpr (std::is_same_v<Payload, WorkspaceTablePayload>) {
          addTableChunks(payload, options, chunks);
        } else if constexpr (std::is_same_v<Payload, WorkspaceRichTextPayload>) {
          forEachParagraph(payload.markdown, limitOf(options.maxRichTextLines), chunks.scratch(),
                           [&](size_t number, std::string_view text) {
                             chunks.addNumbered("Paragraph ", number, text);
                           });
        } else if constexpr (std::is_same_v<Payload, WorkspaceChatPayload>) {
          addChatChunks(payload, options, chunks);
        } else if constexpr (std::is_same_v<Payload, WorkspaceImagePayload>) {
          chunks.add("Image URL", payload.url);
          chunks.addOptional("Summary", cardSummary(card));
        } else if constexpr (std::is_same_v<Payload, WorkspaceLinkPayload>) {
          addLinkChunks(card, payload, chunks);
        }
      },
      card.payload.value);
}

}  // namespace zorvik
