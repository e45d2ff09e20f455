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

class ChunkList {
 public:
  explicit ChunkList(const WorkspaceCardSearchOptions& options) : options_(options) {}

  void add(std::string label, std::string_view text) {
    if (trimWhitespaceAndNewlines(text).empty()) return;
    chunks_.push_back(
        {std::move(label), WorkspaceCardToolkit::truncate(text, options_.maxChunkChars)});
  }
  void addOptional(std::string label, const std::optional<std::string>& text) {
    if (text) add(std::move(label), *text);
  }

  std::vector<WorkspaceCardSearchChunk> take() { return std::move(chunks_); }

 private:
  const WorkspaceCardSearchOptions& options_;
  std::vector<WorkspaceCardSearchChunk> chunks_;
};

size_t limitOf(int value) { return value > 0 ? static_cast<size_t>(value) : 0; }

std::span<const std::string> firstColumns(const std::vector<std::string>& cells,
                                          size_t maxColumns) {
  return std::span<const std::string>(cells).first(std::min(cells.size(), maxColumns));
}

// Paragraphs are runs of non-blank lines; blank lines only separate them.
std::vector<std::string> paragraphs(std::string_view markdown, size_t limit) {
  std::vector<std::string> result;
  std::string current;
  bool open = false;
  auto close = [&] {
    if (open) result.push_back(std::move(current));
    current.clear();
    open = false;
  };
  size_t start = 0;
  while (start <= markdown.size() && result.size() < limit) {
    size_t end = markdown.find('\n', start);
    if (end == std::string_view::npos) end = markdown.size();
    std::string_view line = markdown.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (trimWhitespaceAndNewlines(line).empty()) {
      close();
    } else {
      if (open) current += '\n';
      current += line;
      open = true;
    }
    start = end + 1;
  }
  if (result.size() < limit) close();
  return result;
}

std::optional<std::string> cardSummary(const WorkspaceCard& card) {
  return card.summary ? card.summary : card.payload.summary();
}

void addLinkChunks(const WorkspaceCard& card, const WorkspaceLinkPayload& link, ChunkList& chunks) {
  chunks.add("Source", WorkspaceCardToolkit::linkSourceWord(link));
  chunks.addOptional("Summary", link.summary);
  chunks.add("Note", link.note);
  for (const auto* items : {&link.rowItems, &link.availableFields}) {
    for (const WorkspaceRowItem& item : *items) {
      std::string value = item.value();
      chunks.add("Field", value.empty() ? item.label : item.label + ": " + value);
    }
  }
  if (card.summary && card.summary != link.summary) chunks.addOptional("Summary", card.summary);
}

void addTableChunks(const WorkspaceTablePayload& table, const WorkspaceCardSearchOptions& options,
                    ChunkList& chunks) {
  const size_t maxColumns = limitOf(options.maxTableColumns);
  chunks.add("Columns", WorkspaceCardToolkit::renderRow(firstColumns(table.columns, maxColumns)));
  const size_t rowCount = std::min(table.rows.size(), limitOf(options.maxTableRows));
  for (size_t index = 0; index < rowCount; ++index) {
    chunks.add("Row " + std::to_string(index + 1),
               WorkspaceCardToolkit::renderRow(firstColumns(table.rows[index], maxColumns)));
  }
}

void addChatChunks(const WorkspaceChatPayload& chat, const WorkspaceCardSearchOptions& options,
                   ChunkList& chunks) {
  const size_t count = std::min(chat.messages.size(), limitOf(options.maxChatMessages));
  for (size_t index = chat.messages.size() - count; index < chat.messages.size(); ++index) {
    chunks.add("Message " + std::to_string(index + 1), chat.messages[index].text);
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
  ChunkList chunks(options);
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
          const auto texts = paragraphs(payload.markdown, limitOf(options.maxRichTextLines));
          for (size_t index = 0; index < texts.size(); ++index) {
            chunks.add("Paragraph " + std::to_string(index + 1), texts[index]);
          }
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
  return chunks.take();
}

}  // namespace zorvik
