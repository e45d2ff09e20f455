// A child process for the discovery tests. It asks the registry for a provider and prints one line
// per request: "none", or the provider's scores for the query "abc" against the texts "abc",
// "cab" and "xyz". With an argument, it then points ZORVIK_EMBEDDINGS_LIBRARY there and asks
// again, to show that discovery does not run twice.
//
// Built twice: once plain, and once with SEMANTIC_SEARCH_PROBE_BUILTIN, where the executable
// itself defines the entry point, registering a provider that scores every text 7.
#include <cstdio>
#include <cstdlib>

#include "tools/cards/semantic_search_provider_registry.h"

#ifdef SEMANTIC_SEARCH_PROBE_BUILTIN
namespace {
class ConstantProvider final : public zorvik::SemanticSearchProvider {
 public:
  std::vector<float> similarityScores(const std::string&,
                                      const std::vector<std::string>& texts) const override {
    return std::vector<float>(texts.size(), 7.0f);
  }
};
}  // namespace

extern "C" __attribute__((visibility("default"))) void zorvikCoreEmbeddings_register() {
  zorvik::SemanticSearchProviderRegistry::registerProvider(
      [] { return std::make_unique<ConstantProvider>(); });
}
#endif

namespace {

void report() {
  std::unique_ptr<zorvik::SemanticSearchProvider> provider =
      zorvik::SemanticSearchProviderRegistry::makeProvider();
  if (!provider) {
    std::puts("none");
    return;
  }
  const std::vector<float> scores = provider->similarityScores("abc", {"abc", "cab", "xyz"});
  for (size_t i = 0; i < scores.size(); ++i) std::printf(i ? " %.3f" : "%.3f", scores[i]);
  std::puts("");
}

}  // namespace

int main(int argc, char** argv) {
  report();
  if (argc > 1) {
    setenv("ZORVIK_EMBEDDINGS_LIBRARY", argv[1], 1);
    report();
  }
  return 0;
}
