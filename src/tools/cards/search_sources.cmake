target_sources(zorvik_tools_cards PRIVATE
  workspace_card_search_chunks.cc
  card_search_ranking.cc
  board_search_cards_tool.cc
  board_search_in_card_tool.cc
  semantic_search_provider_registry.cc
)
