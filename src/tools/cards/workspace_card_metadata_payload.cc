#include "tools/cards/workspace_card_metadata_payload.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue WorkspaceCardMetadataPayload::encode() const {
  return ObjectEncoder()
      .add("link_url", linkUrl)
      .add("link_source", linkSource)
      .add("link_properties_count", linkPropertiesCount)
      .add("image_url", imageUrl)
      .add("images_count", imagesCount)
      .add("note_length", noteLength)
      .add("row_items_count", rowItemsCount)
      .add("available_fields_count", availableFieldsCount)
      .add("hidden_fields_count", hiddenFieldsCount)
      .add("table_columns", tableColumns)
      .add("table_rows", tableRows)
      .add("table_shows_row_headers", tableShowsRowHeaders)
      .add("table_column_headers", tableColumnHeaders)
      .add("chat_message_count", chatMessageCount)
      .add("rich_text_length", richTextLength)
      .add("rich_text_line_count", richTextLineCount)
      .add("html_length", htmlLength)
      .add("html_css_length", htmlCSSLength)
      .add("html_js_length", htmlJSLength)
      .add("html_allow_remote_assets", htmlAllowRemoteAssets)
      .add("html_persisted_state_length", htmlPersistedStateLength)
      .add("rich_text_current_font_size", richTextCurrentFontSize)
      .add("rich_text_default_font_size", richTextDefaultFontSize)
      .add("rich_text_recommended_min_font_size", richTextRecommendedMinFontSize)
      .add("rich_text_recommended_max_font_size", richTextRecommendedMaxFontSize)
      .add("rich_text_suggested_role", richTextSuggestedRole)
      .add("folder_layout", folderLayout)
      .add("folder_node_role", folderNodeRole)
      .add("folder_child_count", folderChildCount)
      .build();
}

}  // namespace zorvik
