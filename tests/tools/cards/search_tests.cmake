# Card search: chunks, ranking, search_cards, search_in_card and the embeddings provider registry.
zorvik_add_test(card_search_tests
  SOURCES
    search_test_cards.cc
    workspace_card_search_chunks_test.cc
    card_search_ranking_test.cc
    board_search_cards_tool_test.cc
    board_search_in_card_tool_test.cc
    semantic_search_provider_registry_test.cc
  LIBS zorvik_tools_cards)

# Discovery runs once per process, so its cases run child processes: a provider library, and a
# probe built plain and with its own registration entry point. The probes export their symbols
# so that the library can register back into them.
add_library(semantic_search_test_provider SHARED semantic_search_test_provider.cc)
foreach(probe semantic_search_probe semantic_search_probe_builtin)
  add_executable(${probe} semantic_search_probe.cc)
  target_link_libraries(${probe} PRIVATE zorvik_tools_cards)
  set_target_properties(${probe} PROPERTIES ENABLE_EXPORTS ON)
endforeach()
target_compile_definitions(semantic_search_probe_builtin PRIVATE SEMANTIC_SEARCH_PROBE_BUILTIN)
add_dependencies(card_search_tests semantic_search_test_provider semantic_search_probe
                 semantic_search_probe_builtin)
target_compile_definitions(card_search_tests PRIVATE
  SEMANTIC_SEARCH_PROBE="$<TARGET_FILE:semantic_search_probe>"
  SEMANTIC_SEARCH_PROBE_BUILTIN="$<TARGET_FILE:semantic_search_probe_builtin>"
  SEMANTIC_SEARCH_TEST_PROVIDER="$<TARGET_FILE:semantic_search_test_provider>")

# grep_cards lives with the command line.
zorvik_add_test(board_grep_tests
  SOURCES
    search_test_cards.cc
    board_grep_tool_test.cc
    grep_chunk_matcher_test.cc
  LIBS zorvik_cli)
