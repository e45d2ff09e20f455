// Relevance ranking by token overlap, shared by the card search tools.
//
// A query is cut into tokens; a chunk scores the share of query tokens found, as substrings, in its
// lower-cased text. Pure functions, thread-safe. Ranked cards point into the caller's cards, which
// must outlive the result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/cards/workspace_card_search_chunks.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

// Lower-cases the text and splits it into runs of Unicode letters and digits; runs shorter than 2
// characters are dropped. Duplicates stay, in text order.
std::vector<std::string> tokenize(std::string_view text);

// (tokens found in the lower-cased text) / (number of tokens), a token repeated in the query
// counting each time. Empty text or no tokens score 0.
float chunkScore(std::string_view text, const std::vector<std::string>& tokens);

struct ScoredChunk {
  WorkspaceCardSearchChunk chunk;
  float score = 0;

  bool operator==(const ScoredChunk&) const = default;
};

// The chunks with their scores, by score descending; equal scores keep chunk order.
std::vector<ScoredChunk> scoreChunks(std::vector<WorkspaceCardSearchChunk> chunks,
                                     const std::vector<std::string>& tokens);

struct RankedCard {
  const WorkspaceCard* card = nullptr;
  float score = 0;                                 // the best chunk's score
  std::vector<WorkspaceCardSearchChunk> snippets;  // all chunks, best first
};

// The first `limit` of the cards whose best chunk scores above 0, by score descending; ties keep
// the given order. No tokens rank nothing. Only the cards returned have their chunks collected.
std::vector<RankedCard> rank(const std::vector<const WorkspaceCard*>& cards,
                             const std::vector<std::string>& tokens,
                             const WorkspaceCardSearchOptions& options = {},
                             size_t limit = SIZE_MAX);

}  // namespace zorvik
