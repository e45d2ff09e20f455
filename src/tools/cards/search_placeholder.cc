// Replaced by the search sources.
