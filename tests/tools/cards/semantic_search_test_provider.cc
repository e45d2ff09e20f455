// A provider library for the discovery tests: it embeds texts as letter counts, so that similar
// spellings score high, and registers itself through the discovery entry point.
#include <cctype>

#include "tools/cards/semantic_search_provider_registry.h"

namespace {

class LetterCountProvider final : public zorvik::SemanticReusableEmbeddingProvider {
 public:
  std::vector<zorvik::SemanticTextEmbedding> embed(
      const std::vector<std::string>& texts) const override {
    std::vector<zorvik::SemanticTextEmbedding> embeddings;
    for (const std::string& text : texts) {
      std::vector<float> counts(26, 0.0f);
      for (unsigned char c : text) {
        if (std::isalpha(c)) counts[std::tolower(c) - 'a'] += 1.0f;
      }
      embeddings.push_back(zorvik::SemanticTextEmbedding::fromFloats(counts));
    }
    return embeddings;
  }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) void zorvikCoreEmbeddings_register() {
  zorvik::SemanticSearchProviderRegistry::registerProvider(
      [] { return std::make_unique<LetterCountProvider>(); });
}
