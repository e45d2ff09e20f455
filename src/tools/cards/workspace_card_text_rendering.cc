// Plain text renderings of cards: the one-line summary and the full context text.
#include <algorithm>

#include "foundation/text.h"
#include "tools/cards/card_selection.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

std::optional<std::string> nonEmptySummary(const WorkspaceCard& card) {
  if (card.summary && !trimWhitespaceAndNewlines(*card.summary).empty()) return card.summary;
  auto own = card.payload.summary();
  if (own && !trimWhitespaceAndNewlines(*own).empty()) return own;
  return std::nullopt;
}

std::string orDefault(const std::string& text, std::string_view prefix, std::string_view fallback) {
  return text.empty() ? std::string(fallback) : std::string(prefix) + text;
}

// Appends lines; empty values are skipped by `fact`.
class LineWriter {
 public:
  void line(std::string_view text) {
    if (!text_.empty()) text_ += '\n';
    text_ += text;
  }
  void fact(std::string_view prefix, std::string_view value) {
    if (!value.empty()) line(std::string(prefix) + std::string(value));
  }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

void writeLink(LineWriter& out, const WorkspaceLinkPayload& link) {
  out.fact("Source: ", WorkspaceCardToolkit::linkSourceWord(link));
  out.fact("Item URL: ", link.url);
  out.fact("Notes: ", link.note);
  for (const auto& item : link.rowItems) out.line(item.label + ": " + item.value());
  if (auto primary = WorkspaceCardToolkit::primaryImage(link)) {
    const bool active = link.currentImageIndex >= 0 &&
                        static_cast<uint64_t>(link.currentImageIndex) < link.images.size();
    const int64_t position = active ? link.currentImageIndex + 1 : 1;
    out.line("Image (" + std::to_string(position) + " of " + std::to_string(link.images.size()) +
             "): " + *primary);
  }
  if (!trimWhitespaceAndNewlines(link.richText).empty()) out.line(link.richText);
}

void writeTable(LineWriter& out, const WorkspaceTablePayload& table) {
  out.line("Columns: " + WorkspaceCardToolkit::renderRow(table.columns));
  out.line("Rows:");
  for (TableRows::Row row : table.rows) out.line(WorkspaceCardToolkit::renderRow(row));
}

void writeFolder(LineWriter& out, const WorkspaceCard& card, const WorkspaceFolderPayload& folder,
                 const WorkspaceCardContext& context) {
  out.line("Folder (" + folder.layout + "): " + folder.nodeRole);
  auto found = context.childrenByParent.find(card.id);
  const size_t count = found == context.childrenByParent.end() ? 0 : found->second.size();
  out.line("Folder: " + std::to_string(count) + (count == 1 ? " card" : " cards"));
  if (count == 0) return;
  for (const Uuid& childID : found->second) {
    auto child = context.cardsByID.find(childID);
    if (child == context.cardsByID.end()) continue;
    const WorkspaceCard& childCard = *child->second;
    out.line("- " + childCard.title + " [" + std::string(toolTypeWord(childCard.type)) +
             "]: " + WorkspaceCardToolkit::summaryText(childCard));
  }
}

void writeBrowser(LineWriter& out, const WorkspaceBrowserPayload& browser) {
  const bool blank = trimWhitespaceAndNewlines(browser.currentURL).empty() &&
                     browser.pageTitle.value_or("").empty() &&
                     browser.lastError.value_or("").empty();
  if (blank) {
    out.line("Blank browser card.");
    return;
  }
  out.fact("Page title: ", browser.pageTitle.value_or(""));
  out.fact("Browser URL: ", browser.currentURL);
  out.fact("Last error: ", browser.lastError.value_or(""));
}

void writeHTML(LineWriter& out, const WorkspaceHTMLPayload& html) {
  out.line(std::string("Remote assets: ") + (html.allowRemoteAssets ? "allowed" : "blocked"));
  if (html.persistedState) {
    out.line("Persisted state bytes: " + std::to_string(html.persistedState->size()));
  }
  for (const auto& function : html.publicFunctions) {
    out.line("Public function: " + function.id + " (" + function.name + ")");
  }
  out.fact("HTML:\n", html.html);
  out.fact("CSS:\n", html.css);
  out.fact("JS:\n", html.js);
}

}  // namespace

std::string WorkspaceCardToolkit::summaryText(const WorkspaceCard& card) {
  if (auto summary = nonEmptySummary(card)) return *summary;
  const auto& value = card.payload.value;
  if (const auto* link = std::get_if<WorkspaceLinkPayload>(&value)) {
    return orDefault(link->url, "Item URL: ", "Item card.");
  }
  if (const auto* image = std::get_if<WorkspaceImagePayload>(&value)) {
    return orDefault(image->url, "Image: ", "Image card.");
  }
  if (std::holds_alternative<WorkspaceChatPayload>(value)) return "Chat card.";
  if (std::holds_alternative<WorkspaceRichTextPayload>(value)) return "Text card.";
  if (std::holds_alternative<WorkspaceHTMLPayload>(value)) return "HTML card.";
  if (const auto* browser = std::get_if<WorkspaceBrowserPayload>(&value)) {
    return orDefault(browser->currentURL, "Browser URL: ", "Browser card.");
  }
  if (const auto* folder = std::get_if<WorkspaceFolderPayload>(&value)) {
    return "Folder (" + folder->layout + ").";
  }
  if (const auto* table = std::get_if<WorkspaceTablePayload>(&value)) {
    size_t columns = table->columns.size();
    for (TableRows::Row row : table->rows) columns = std::max(columns, row.size());
    return "Table with " + std::to_string(table->rows.size()) + " rows and " +
           std::to_string(columns) + " columns.";
  }
  const auto& video = std::get<WorkspaceVideoPayload>(value);
  return orDefault(video.url, "", "Video card.");
}

std::string WorkspaceCardToolkit::contextText(const WorkspaceCard& card,
                                              const WorkspaceCardContext& context) {
  LineWriter out;
  out.line("Title: " + card.title);
  if (auto summary = nonEmptySummary(card)) out.line("Summary: " + *summary);
  const auto& value = card.payload.value;
  if (const auto* link = std::get_if<WorkspaceLinkPayload>(&value)) {
    writeLink(out, *link);
  } else if (const auto* image = std::get_if<WorkspaceImagePayload>(&value)) {
    out.fact("Image: ", image->url);
    if (auto resource = boardResourceURL(card, context)) {
      out.line("Board Resource URL (preferred for HTML img src): " + *resource);
    }
  } else if (const auto* chat = std::get_if<WorkspaceChatPayload>(&value)) {
    out.line("Chat: " + std::to_string(chat->messages.size()) +
             (chat->messages.size() == 1 ? " message" : " messages"));
    for (const auto& message : chat->messages) out.line(message.role + ": " + message.text);
  } else if (const auto* richText = std::get_if<WorkspaceRichTextPayload>(&value)) {
    if (!richText->markdown.empty()) out.line(richText->markdown);
  } else if (const auto* html = std::get_if<WorkspaceHTMLPayload>(&value)) {
    writeHTML(out, *html);
  } else if (const auto* browser = std::get_if<WorkspaceBrowserPayload>(&value)) {
    writeBrowser(out, *browser);
  } else if (const auto* folder = std::get_if<WorkspaceFolderPayload>(&value)) {
    writeFolder(out, card, *folder, context);
  } else if (const auto* table = std::get_if<WorkspaceTablePayload>(&value)) {
    writeTable(out, *table);
  } else if (const auto* video = std::get_if<WorkspaceVideoPayload>(&value)) {
    out.fact("Video: ", video->url);
  }
  return out.take();
}

}  // namespace zorvik
