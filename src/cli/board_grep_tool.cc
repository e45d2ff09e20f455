// Replaced by the grep_cards tool.
