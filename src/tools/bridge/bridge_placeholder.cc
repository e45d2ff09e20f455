// Replaced by the bridge sources.
