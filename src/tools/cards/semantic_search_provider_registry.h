// SemanticSearchProviderRegistry: one process-wide slot for an optional embeddings provider.
//
// Nothing in the system requires a provider. A provider library announces itself by exporting
// the C function `zorvikCoreEmbeddings_register`, which calls
// SemanticSearchProviderRegistry::registerProvider. The first makeProvider() that finds the slot
// empty runs discovery once per process: the function is looked up in the running process, and
// when it is absent the library $ZORVIK_EMBEDDINGS_LIBRARY (when set and not empty), else
// <executable dir>/../lib/zorvik/libzorvik-embeddings.so, is loaded (lazy, local binding) and the
// function looked up in it. A missing or unloadable library simply leaves the slot empty. The
// library resolves registerProvider against the executable, so the executable must export its
// symbols (linked with -rdynamic). All functions are thread-safe.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zorvik {

// An embedding vector as bytes: `dimensions` 32-bit floats in the machine's byte order.
struct SemanticTextEmbedding {
  std::vector<uint8_t> embeddingData;
  int dimensions = 0;

  static SemanticTextEmbedding fromFloats(const std::vector<float>& values);
  // The vector, or empty when the data does not hold `dimensions` floats.
  std::vector<float> floats() const;
  bool operator==(const SemanticTextEmbedding&) const = default;
};

// Cosine similarity of two embeddings; 0 when their dimensions differ, either is malformed or
// either has no length.
float cosineSimilarity(const SemanticTextEmbedding& a, const SemanticTextEmbedding& b);

class SemanticSearchProvider {
 public:
  virtual ~SemanticSearchProvider();
  // One score per text, in order; higher is more similar. Blocking; may throw on failure.
  virtual std::vector<float> similarityScores(const std::string& query,
                                              const std::vector<std::string>& texts) const = 0;
};

// A provider built on embeddings. Its similarityScores embeds the query as a one-element batch
// and the texts as one batch, and gives the cosine similarity of each text with the query (0 for
// a text whose embedding is missing).
class SemanticReusableEmbeddingProvider : public SemanticSearchProvider {
 public:
  // One embedding per text, in order.
  virtual std::vector<SemanticTextEmbedding> embed(const std::vector<std::string>& texts) const = 0;
  std::vector<float> similarityScores(const std::string& query,
                                      const std::vector<std::string>& texts) const override;
};

class SemanticSearchProviderRegistry {
 public:
  using Factory = std::function<std::unique_ptr<SemanticSearchProvider>()>;

  // Stores the factory in the slot, replacing any earlier one.
  static void registerProvider(Factory factory);
  // A provider from the slot's factory, discovering one first when the slot is empty; nullptr
  // when there is none.
  static std::unique_ptr<SemanticSearchProvider> makeProvider();

  SemanticSearchProviderRegistry() = delete;
};

}  // namespace zorvik
