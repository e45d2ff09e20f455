#include "tools/cards/semantic_search_provider_registry.h"

#include <dlfcn.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <system_error>

namespace zorvik {
namespace {

constexpr const char* kRegisterSymbol = "zorvikCoreEmbeddings_register";

struct Slot {
  std::mutex mutex;
  SemanticSearchProviderRegistry::Factory factory;
  std::once_flag discovery;
};

Slot& slot() {
  static Slot instance;
  return instance;
}

SemanticSearchProviderRegistry::Factory currentFactory() {
  std::lock_guard lock(slot().mutex);
  return slot().factory;
}

std::filesystem::path libraryPath() {
  const char* configured = std::getenv("ZORVIK_EMBEDDINGS_LIBRARY");
  if (configured != nullptr && *configured != '\0') return configured;
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  return executable.parent_path() / ".." / "lib" / "zorvik" / "libzorvik-embeddings.so";
}

void discover() {
  void* symbol = dlsym(RTLD_DEFAULT, kRegisterSymbol);
  if (symbol == nullptr) {
    const std::filesystem::path path = libraryPath();
    if (path.empty()) return;
    // The handle stays open for the life of the process: the provider's code lives in it.
    void* handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (handle == nullptr) return;
    symbol = dlsym(handle, kRegisterSymbol);
    if (symbol == nullptr) symbol = dlsym(RTLD_DEFAULT, kRegisterSymbol);
  }
  if (symbol != nullptr) reinterpret_cast<void (*)()>(symbol)();
}

}  // namespace

SemanticTextEmbedding SemanticTextEmbedding::fromFloats(const std::vector<float>& values) {
  SemanticTextEmbedding embedding{std::vector<uint8_t>(values.size() * sizeof(float)),
                                  static_cast<int>(values.size())};
  if (!values.empty())
    std::memcpy(embedding.embeddingData.data(), values.data(), embedding.embeddingData.size());
  return embedding;
}

std::vector<float> SemanticTextEmbedding::floats() const {
  if (dimensions <= 0 || embeddingData.size() != static_cast<size_t>(dimensions) * sizeof(float)) {
    return {};
  }
  std::vector<float> values(static_cast<size_t>(dimensions));
  std::memcpy(values.data(), embeddingData.data(), embeddingData.size());
  return values;
}

float cosineSimilarity(const SemanticTextEmbedding& a, const SemanticTextEmbedding& b) {
  const std::vector<float> x = a.floats();
  const std::vector<float> y = b.floats();
  if (x.empty() || x.size() != y.size()) return 0;
  double dot = 0, xx = 0, yy = 0;
  for (size_t i = 0; i < x.size(); ++i) {
    dot += static_cast<double>(x[i]) * y[i];
    xx += static_cast<double>(x[i]) * x[i];
    yy += static_cast<double>(y[i]) * y[i];
  }
  if (xx == 0 || yy == 0) return 0;
  return static_cast<float>(dot / (std::sqrt(xx) * std::sqrt(yy)));
}

SemanticSearchProvider::~SemanticSearchProvider() = default;

std::vector<float> SemanticReusableEmbeddingProvider::similarityScores(
    const std::string& query, const std::vector<std::string>& texts) const {
  std::vector<float> scores(texts.size(), 0.0f);
  if (texts.empty()) return scores;
  const std::vector<SemanticTextEmbedding> queryEmbedding = embed({query});
  if (queryEmbedding.empty()) return scores;
  const std::vector<SemanticTextEmbedding> textEmbeddings = embed(texts);
  for (size_t i = 0; i < scores.size() && i < textEmbeddings.size(); ++i) {
    scores[i] = cosineSimilarity(queryEmbedding.front(), textEmbeddings[i]);
  }
  return scores;
}

void SemanticSearchProviderRegistry::registerProvider(Factory factory) {
  std::lock_guard lock(slot().mutex);
  slot().factory = std::move(factory);
}

std::unique_ptr<SemanticSearchProvider> SemanticSearchProviderRegistry::makeProvider() {
  Factory factory = currentFactory();
  if (!factory) {
    std::call_once(slot().discovery, discover);
    factory = currentFactory();
  }
  return factory ? factory() : nullptr;
}

}  // namespace zorvik
