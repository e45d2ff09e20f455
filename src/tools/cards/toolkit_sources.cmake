target_sources(zorvik_tools_cards PRIVATE
  card_selection.cc
  workspace_card_context.cc
  workspace_card_content_request.cc
  workspace_card_content_payload.cc
  workspace_card_metadata_payload.cc
  workspace_card_toolkit.cc
  workspace_card_table_slicing.cc
  workspace_card_typed_content.cc
  workspace_card_text_rendering.cc
  workspace_card_metadata.cc
  workspace_card_links.cc
  board_get_card_content_tool.cc
  board_list_card_metadata_tool.cc
)
