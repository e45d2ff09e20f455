#include "tools/cards/card_search_ranking.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <optional>

#include "foundation/parallel_for.h"
#include "foundation/text.h"

namespace zorvik {

std::vector<std::string> tokenize(std::string_view text) {
  const std::string lower = lowercased(text);
  const auto* bytes = reinterpret_cast<const uint8_t*>(lower.data());
  const auto length = static_cast<int32_t>(lower.size());
  std::vector<std::string> tokens;
  auto keep = [&](int32_t start, int32_t end) {
    std::string_view token(lower.data() + start, static_cast<size_t>(end - start));
    if (!token.empty() && characterCount(token) >= 2) tokens.emplace_back(token);
  };
  int32_t tokenStart = 0;
  int32_t offset = 0;
  while (offset < length) {
    const int32_t codePointStart = offset;
    UChar32 codePoint;
    U8_NEXT(bytes, offset, length, codePoint);
    if (codePoint < 0 || !u_isalnum(codePoint)) {
      keep(tokenStart, codePointStart);
      tokenStart = offset;
    }
  }
  keep(tokenStart, length);
  return tokens;
}

namespace {

float scoreOfLowercased(const std::string& lower, const std::vector<std::string>& tokens) {
  if (lower.empty() || tokens.empty()) return 0;
  const auto found = std::count_if(tokens.begin(), tokens.end(), [&](const std::string& token) {
    return lower.find(token) != std::string::npos;
  });
  return static_cast<float>(found) / static_cast<float>(tokens.size());
}

}  // namespace

float chunkScore(std::string_view text, const std::vector<std::string>& tokens) {
  if (tokens.empty()) return 0;
  return scoreOfLowercased(lowercased(text), tokens);
}

std::vector<ScoredChunk> scoreChunks(std::vector<WorkspaceCardSearchChunk> chunks,
                                     const std::vector<std::string>& tokens) {
  std::vector<ScoredChunk> scored;
  scored.reserve(chunks.size());
  for (auto& chunk : chunks) {
    const float score = chunkScore(chunk.text, tokens);
    scored.push_back({std::move(chunk), score});
  }
  std::stable_sort(scored.begin(), scored.end(),
                   [](const ScoredChunk& a, const ScoredChunk& b) { return a.score > b.score; });
  return scored;
}

std::vector<RankedCard> rank(const std::vector<const WorkspaceCard*>& cards,
                             const std::vector<std::string>& tokens,
                             const WorkspaceCardSearchOptions& options, size_t limit) {
  std::vector<RankedCard> ranked;
  if (tokens.empty()) return ranked;
  // Every card's best score, on several threads, each into its own slot; the chunks are looked at
  // in place.
  std::vector<float> best(cards.size(), 0);
  parallelFor(
      cards.size(),
      [&](size_t i) {
        forEachSearchChunk(*cards[i], options, [&](std::string_view, std::string_view text) {
          best[i] = std::max(best[i], chunkScore(text, tokens));
        });
      },
      64);
  std::vector<size_t> order;
  for (size_t i = 0; i < cards.size(); ++i) {
    if (best[i] > 0) order.push_back(i);
  }
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t a, size_t b) { return best[a] > best[b]; });
  if (order.size() > limit) order.resize(limit);
  ranked.reserve(order.size());
  for (size_t i : order) {
    RankedCard entry{cards[i], best[i], {}};
    for (ScoredChunk& item : scoreChunks(searchChunks(*cards[i], options), tokens)) {
      entry.snippets.push_back(std::move(item.chunk));
    }
    ranked.push_back(std::move(entry));
  }
  return ranked;
}

}  // namespace zorvik
