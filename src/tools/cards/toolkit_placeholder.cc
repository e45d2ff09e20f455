// Replaced by the toolkit sources.
