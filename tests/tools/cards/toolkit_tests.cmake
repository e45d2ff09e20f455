zorvik_add_test(card_toolkit_tests
  SOURCES
    card_selection_test.cc
    toolkit_slicing_test.cc
    toolkit_table_test.cc
    toolkit_content_test.cc
    toolkit_tools_test.cc
    toolkit_example_board_test.cc
  LIBS zorvik_tools_cards)
