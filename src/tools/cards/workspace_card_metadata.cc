// Light per-card facts for list_card_metadata.
#include <algorithm>

#include "foundation/text.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

// Rich text sizes in points: what a card shows without a font size, and the sizes that read well.
constexpr double kRichTextDefaultFontSize = 16;
constexpr double kRichTextRecommendedMinFontSize = 12;
constexpr double kRichTextRecommendedMaxFontSize = 48;
// From this size on, or for one short line, a rich text card reads as a title or heading.
constexpr double kHeadingFontSize = 24;
constexpr size_t kHeadingMaxCharacters = 80;

int64_t count(size_t value) { return static_cast<int64_t>(value); }

int64_t lineCount(std::string_view text) {
  if (text.empty()) return 0;
  return 1 + count(static_cast<size_t>(std::count(text.begin(), text.end(), '\n')));
}

std::string suggestedRole(const WorkspaceRichTextPayload& richText, double fontSize) {
  const std::string trimmed = trimWhitespaceAndNewlines(richText.markdown);
  if (trimmed.empty()) return "body";
  const bool singleLine = trimmed.find('\n') == std::string::npos;
  const bool heading =
      singleLine && (trimmed.starts_with("#") || characterCount(trimmed) <= kHeadingMaxCharacters);
  return heading || fontSize >= kHeadingFontSize ? "title_or_heading" : "body";
}

}  // namespace

WorkspaceCardMetadataPayload WorkspaceCardToolkit::metadata(const WorkspaceCard& card,
                                                            const WorkspaceCardContext& context) {
  WorkspaceCardMetadataPayload metadata;
  const auto& value = card.payload.value;
  if (const auto* link = std::get_if<WorkspaceLinkPayload>(&value)) {
    metadata.linkUrl = link->url;
    metadata.linkSource = linkSourceWord(*link);
    metadata.linkPropertiesCount = count(link->rowItems.size() + link->hiddenRowItems.size());
    metadata.imagesCount = count(link->images.size());
    metadata.noteLength = count(characterCount(link->note));
    metadata.rowItemsCount = count(link->rowItems.size());
    metadata.availableFieldsCount = count(link->availableFields.size());
    metadata.hiddenFieldsCount = count(link->hiddenRowItems.size());
  } else if (const auto* image = std::get_if<WorkspaceImagePayload>(&value)) {
    metadata.imageUrl = image->url;
  } else if (const auto* chat = std::get_if<WorkspaceChatPayload>(&value)) {
    metadata.chatMessageCount = count(chat->messages.size());
  } else if (const auto* richText = std::get_if<WorkspaceRichTextPayload>(&value)) {
    const double fontSize = richText->fontSize.value_or(kRichTextDefaultFontSize);
    metadata.richTextLength = count(characterCount(richText->markdown));
    metadata.richTextLineCount = lineCount(richText->markdown);
    metadata.richTextCurrentFontSize = fontSize;
    metadata.richTextDefaultFontSize = kRichTextDefaultFontSize;
    metadata.richTextRecommendedMinFontSize = kRichTextRecommendedMinFontSize;
    metadata.richTextRecommendedMaxFontSize = kRichTextRecommendedMaxFontSize;
    metadata.richTextSuggestedRole = suggestedRole(*richText, fontSize);
  } else if (const auto* html = std::get_if<WorkspaceHTMLPayload>(&value)) {
    metadata.htmlLength = count(utf16Length(html->html));
    metadata.htmlCSSLength = count(utf16Length(html->css));
    metadata.htmlJSLength = count(utf16Length(html->js));
    metadata.htmlAllowRemoteAssets = html->allowRemoteAssets;
    if (html->persistedState) {
      metadata.htmlPersistedStateLength = count(utf16Length(*html->persistedState));
    }
  } else if (const auto* folder = std::get_if<WorkspaceFolderPayload>(&value)) {
    metadata.folderLayout = folder->layout;
    metadata.folderNodeRole = folder->nodeRole;
    auto children = context.childrenByParent.find(card.id);
    metadata.folderChildCount =
        children == context.childrenByParent.end() ? 0 : count(children->second.size());
  } else if (const auto* table = std::get_if<WorkspaceTablePayload>(&value)) {
    size_t columns = table->columns.size();
    for (TableRows::Row row : table->rows) columns = std::max(columns, row.size());
    metadata.tableColumns = count(columns);
    metadata.tableRows = count(table->rows.size());
    metadata.tableShowsRowHeaders = table->showsRowHeaders;
    metadata.tableColumnHeaders = table->columns;
  }
  return metadata;
}

}  // namespace zorvik
