// Typed content per card type: field selection, text cuts, row-item caps and html windows.
#include <algorithm>

#include "foundation/text.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

// Which fields a selector list asks for; no list, or an empty one, asks for all. Selectors are
// compared trimmed and lower-cased; unknown ones are ignored.
class FieldSelection {
 public:
  explicit FieldSelection(const std::optional<std::vector<std::string>>& fields) {
    if (!fields) return;
    for (const auto& field : *fields) {
      std::string normalized = lowercased(trimWhitespaceAndNewlines(field));
      if (!normalized.empty()) selected_.push_back(std::move(normalized));
    }
  }

  bool wants(std::string_view field) const {
    return selected_.empty() ||
           std::find(selected_.begin(), selected_.end(), field) != selected_.end();
  }
  bool wantsAny(std::initializer_list<std::string_view> fields) const {
    return std::any_of(fields.begin(), fields.end(), [&](auto field) { return wants(field); });
  }

 private:
  std::vector<std::string> selected_;
};

template <class T>
std::optional<T> when(bool wanted, T value) {
  return wanted ? std::optional<T>(std::move(value)) : std::nullopt;
}

std::optional<std::string> cardSummary(const WorkspaceCard& card) {
  if (card.summary && !card.summary->empty()) return card.summary;
  auto own = card.payload.summary();
  if (own && !own->empty()) return own;
  return std::nullopt;
}

std::vector<WorkspaceRowItem> capped(const std::vector<WorkspaceRowItem>& items,
                                     std::optional<int64_t> maxItems) {
  if (!maxItems || *maxItems < 0 || static_cast<uint64_t>(*maxItems) >= items.size()) return items;
  return {items.begin(), items.begin() + *maxItems};
}

WorkspaceLinkContent linkContent(const WorkspaceCard& card, const WorkspaceLinkPayload& link,
                                 const WorkspaceCardLinkOptions& options,
                                 std::optional<int64_t> maxChars) {
  const FieldSelection fields(options.fields);
  auto cut = [&](std::string_view text) { return WorkspaceCardToolkit::truncate(text, maxChars); };
  WorkspaceLinkContent content;
  content.source = when(fields.wants("source"), WorkspaceCardToolkit::linkSourceWord(link));
  content.url = when(fields.wants("url"), link.url);
  content.note = when(fields.wants("note"), cut(link.note));
  if (fields.wants("summary")) {
    if (auto summary = cardSummary(card)) content.summary = cut(*summary);
  }
  content.richText = when(fields.wants("rich_text"), cut(link.richText));
  if (fields.wants("sanitized_html") && link.sanitizedHTML) {
    content.sanitizedHTML = cut(*link.sanitizedHTML);
  }
  content.rowItems = when(fields.wants("row_items"), capped(link.rowItems, options.maxItems));
  content.availableFields =
      when(fields.wants("available_fields"), capped(link.availableFields, options.maxItems));
  content.hiddenFields = when(fields.wantsAny({"hidden_fields", "hidden_row_items"}),
                              capped(link.hiddenRowItems, options.maxItems));
  content.images = when(fields.wants("images"), link.images);
  if (fields.wants("primary_image"))
    content.primaryImage = WorkspaceCardToolkit::primaryImage(link);
  content.availableImages = when(fields.wants("available_images"), link.availableImages);
  return content;
}

WorkspaceImageContent imageContent(const WorkspaceCard& card, const WorkspaceImagePayload& image,
                                   const WorkspaceCardImageOptions& options,
                                   std::optional<int64_t> maxChars,
                                   const WorkspaceCardContext& context) {
  const FieldSelection fields(options.fields);
  WorkspaceImageContent content;
  content.url = when(fields.wants("url"), image.url);
  if (fields.wants("summary")) {
    if (auto summary = cardSummary(card)) {
      content.summary = WorkspaceCardToolkit::truncate(*summary, maxChars);
    }
  }
  if (fields.wants("board_resource_url")) {
    content.boardResourceURL = WorkspaceCardToolkit::boardResourceURL(card, context);
  }
  return content;
}

WorkspaceChatContent chatContent(const WorkspaceChatPayload& chat,
                                 const WorkspaceCardChatOptions& options,
                                 std::optional<int64_t> maxChars) {
  auto slice = WorkspaceCardToolkit::sliceMessages(chat.messages, options);
  for (auto& message : slice.messages) {
    message.text = WorkspaceCardToolkit::truncate(message.text, maxChars);
  }
  return {std::move(slice.messages), slice.range};
}

WorkspaceRichTextContent richTextContent(const WorkspaceRichTextPayload& richText,
                                         const WorkspaceCardRichTextOptions& options,
                                         std::optional<int64_t> maxChars) {
  auto slice = WorkspaceCardToolkit::sliceLines(richText.markdown, options);
  return {WorkspaceCardToolkit::truncate(slice.text, maxChars), slice.range};
}

WorkspaceHTMLContent htmlContent(const WorkspaceHTMLPayload& html,
                                 const WorkspaceCardHTMLOptions& options,
                                 std::optional<int64_t> maxChars) {
  const FieldSelection fields(options.fields);
  auto window = [&](const std::string& source, std::optional<std::string>& text,
                    std::optional<WorkspaceHTMLSourceWindow>& sourceWindow) {
    auto slice = WorkspaceCardToolkit::sliceHTMLSource(source, options.sourceRange, maxChars);
    text = std::move(slice.text);
    sourceWindow = slice.window;
  };
  WorkspaceHTMLContent content;
  if (fields.wants("html")) window(html.html, content.html, content.htmlWindow);
  if (fields.wants("css")) window(html.css, content.css, content.cssWindow);
  if (fields.wants("js")) window(html.js, content.js, content.jsWindow);
  content.allowRemoteAssets = when(fields.wants("allow_remote_assets"), html.allowRemoteAssets);
  if (fields.wants("persisted_state") && html.persistedState) {
    window(*html.persistedState, content.persistedState, content.persistedStateWindow);
  }
  content.publicFunctions = when(fields.wants("public_functions"), html.publicFunctions);
  return content;
}

WorkspaceFolderContent folderContent(const WorkspaceCard& card,
                                     const WorkspaceFolderPayload& folder,
                                     const WorkspaceCardFolderOptions& options,
                                     std::optional<int64_t> maxChars,
                                     const WorkspaceCardContext& context) {
  const FieldSelection fields(options.fields);
  std::vector<Uuid> children;
  if (auto found = context.childrenByParent.find(card.id);
      found != context.childrenByParent.end()) {
    children = found->second;
  }
  WorkspaceFolderContent content;
  content.layout = when(fields.wants("layout"), folder.layout);
  content.nodeRole = when(fields.wants("node_role"), folder.nodeRole);
  if (fields.wants("summary")) {
    if (auto summary = cardSummary(card)) {
      content.summary = WorkspaceCardToolkit::truncate(*summary, maxChars);
    }
  }
  content.childCount = when(fields.wants("child_count"), static_cast<int64_t>(children.size()));
  content.childIDs = when(fields.wants("child_ids"), std::move(children));
  return content;
}

// The type option's own budget wins over the request's.
std::optional<int64_t> budget(std::optional<int64_t> own, std::optional<int64_t> request) {
  return own ? own : request;
}

}  // namespace

WorkspaceCardContentPayload WorkspaceCardToolkit::typeSpecificContent(
    const WorkspaceCard& card, const WorkspaceCardContentRequest& request,
    const WorkspaceCardContext& context) {
  const WorkspaceCardTypeOptions options = request.typeOptions.value_or(WorkspaceCardTypeOptions{});
  WorkspaceCardContentPayload payload{.mode = WorkspaceCardContentMode::typeSpecific};
  const auto& value = card.payload.value;
  if (const auto* link = std::get_if<WorkspaceLinkPayload>(&value)) {
    auto linkOptions = options.link.value_or(WorkspaceCardLinkOptions{});
    payload.item =
        linkContent(card, *link, linkOptions, budget(linkOptions.maxChars, request.maxChars));
  } else if (const auto* image = std::get_if<WorkspaceImagePayload>(&value)) {
    payload.image = imageContent(card, *image, options.image.value_or(WorkspaceCardImageOptions{}),
                                 request.maxChars, context);
  } else if (const auto* chat = std::get_if<WorkspaceChatPayload>(&value)) {
    auto chatOptions = options.chat.value_or(WorkspaceCardChatOptions{});
    payload.chat = chatContent(*chat, chatOptions, budget(chatOptions.maxChars, request.maxChars));
  } else if (const auto* richText = std::get_if<WorkspaceRichTextPayload>(&value)) {
    auto textOptions = options.richText.value_or(WorkspaceCardRichTextOptions{});
    payload.richText =
        richTextContent(*richText, textOptions, budget(textOptions.maxChars, request.maxChars));
  } else if (const auto* html = std::get_if<WorkspaceHTMLPayload>(&value)) {
    auto htmlOptions = options.html.value_or(WorkspaceCardHTMLOptions{});
    payload.html = htmlContent(*html, htmlOptions, budget(htmlOptions.maxChars, request.maxChars));
  } else if (const auto* folder = std::get_if<WorkspaceFolderPayload>(&value)) {
    payload.folder =
        folderContent(card, *folder, options.folder.value_or(WorkspaceCardFolderOptions{}),
                      request.maxChars, context);
  } else if (const auto* table = std::get_if<WorkspaceTablePayload>(&value)) {
    payload.table =
        tableContent(*table, options.table.value_or(WorkspaceCardTableOptions{}), request.maxChars);
  } else {
    payload.text = truncate(contextText(card, context), request.maxChars);
  }
  return payload;
}

}  // namespace zorvik
