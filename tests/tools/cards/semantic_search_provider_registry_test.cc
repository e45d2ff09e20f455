// The embeddings provider registry: the slot in this process, the embedding comparison, and
// discovery in child processes (discovery runs once per process).
#include "tools/cards/semantic_search_provider_registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::ProcessOptions;
using testing::runProcess;

// Embeds each text as the vector its test gives for it; unknown texts get no embedding.
class TableProvider final : public SemanticReusableEmbeddingProvider {
 public:
  explicit TableProvider(std::map<std::string, std::vector<float>> table)
      : table_(std::move(table)) {}
  std::vector<SemanticTextEmbedding> embed(const std::vector<std::string>& texts) const override {
    ++calls;
    std::vector<SemanticTextEmbedding> embeddings;
    for (const auto& text : texts) {
      auto found = table_.find(text);
      embeddings.push_back(found == table_.end()
                               ? SemanticTextEmbedding{}
                               : SemanticTextEmbedding::fromFloats(found->second));
    }
    return embeddings;
  }
  mutable int calls = 0;

 private:
  std::map<std::string, std::vector<float>> table_;
};

TEST(SemanticTextEmbeddingTest, HoldsFloatsAsBytes) {
  const auto embedding = SemanticTextEmbedding::fromFloats({1.5f, -2.0f});
  EXPECT_EQ(embedding.dimensions, 2);
  EXPECT_EQ(embedding.embeddingData.size(), 8u);
  EXPECT_EQ(embedding.floats(), (std::vector<float>{1.5f, -2.0f}));
  EXPECT_TRUE((SemanticTextEmbedding{{1, 2, 3}, 1}).floats().empty()) << "malformed data";
}

TEST(SemanticTextEmbeddingTest, CosineSimilarity) {
  using E = SemanticTextEmbedding;
  EXPECT_FLOAT_EQ(cosineSimilarity(E::fromFloats({1, 0}), E::fromFloats({3, 0})), 1.0f);
  EXPECT_FLOAT_EQ(cosineSimilarity(E::fromFloats({1, 0}), E::fromFloats({0, 2})), 0.0f);
  EXPECT_FLOAT_EQ(cosineSimilarity(E::fromFloats({1, 1}), E::fromFloats({-1, -1})), -1.0f);
  EXPECT_FLOAT_EQ(cosineSimilarity(E::fromFloats({1, 0}), E::fromFloats({1, 0, 0})), 0.0f);
  EXPECT_FLOAT_EQ(cosineSimilarity(E::fromFloats({0, 0}), E::fromFloats({1, 0})), 0.0f);
}

TEST(SemanticReusableEmbeddingProviderTest, ScoresTextsAgainstTheQueryInTwoBatches) {
  TableProvider provider({{"query", {1, 0}}, {"same", {2, 0}}, {"half", {1, 1}}});
  const std::vector<float> scores = provider.similarityScores("query", {"same", "half", "unknown"});
  ASSERT_EQ(scores.size(), 3u);
  EXPECT_FLOAT_EQ(scores[0], 1.0f);
  EXPECT_NEAR(scores[1], 0.7071f, 1e-4);
  EXPECT_FLOAT_EQ(scores[2], 0.0f);
  EXPECT_EQ(provider.calls, 2);
  EXPECT_TRUE(provider.similarityScores("query", {}).empty());
}

TEST(SemanticSearchProviderRegistryTest, RegisteredFactoryMakesProvidersAndCanBeReplaced) {
  SemanticSearchProviderRegistry::registerProvider(
      [] { return std::make_unique<TableProvider>(std::map<std::string, std::vector<float>>{}); });
  auto first = SemanticSearchProviderRegistry::makeProvider();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->similarityScores("q", {"a"}), std::vector<float>{0.0f});

  SemanticSearchProviderRegistry::registerProvider([] {
    return std::make_unique<TableProvider>(
        std::map<std::string, std::vector<float>>{{"q", {1}}, {"a", {1}}});
  });
  auto second = SemanticSearchProviderRegistry::makeProvider();
  ASSERT_TRUE(second);
  EXPECT_EQ(second->similarityScores("q", {"a"}), std::vector<float>{1.0f});
}

// Discovery, each case in a fresh process.
class SemanticSearchDiscoveryTest : public ::testing::Test {
 protected:
  static std::string probe(const fs::path& program, std::optional<std::string> library,
                           std::vector<std::string> arguments = {}) {
    ProcessOptions options;
    options.environment["ZORVIK_EMBEDDINGS_LIBRARY"] = std::move(library);
    const auto result = runProcess(program, arguments, options);
    EXPECT_EQ(result.exitCode, 0) << result.standardError;
    return result.standardOutput;
  }

  const fs::path plainProbe = SEMANTIC_SEARCH_PROBE;
  const fs::path builtinProbe = SEMANTIC_SEARCH_PROBE_BUILTIN;
  const fs::path providerLibrary = SEMANTIC_SEARCH_TEST_PROVIDER;
  const std::string libraryScores = "1.000 1.000 0.000\n";
};

TEST_F(SemanticSearchDiscoveryTest, LoadsTheLibraryNamedByTheEnvironmentIfItIsOne) {
  EXPECT_EQ(probe(plainProbe, providerLibrary.string()), libraryScores);
  testing::TempDirectory directory;
  const fs::path notALibrary = directory.write("fake.so", "not a shared object");
  EXPECT_EQ(probe(plainProbe, (directory.path() / "missing.so").string()), "none\n");
  EXPECT_EQ(probe(plainProbe, notALibrary.string()), "none\n");
  EXPECT_EQ(probe(plainProbe, std::nullopt), "none\n") << "nothing beside the build's executables";
  EXPECT_EQ(probe(plainProbe, "/nonexistent/library.so", {providerLibrary.string()}),
            "none\nnone\n")
      << "discovery runs once per process";
}

TEST_F(SemanticSearchDiscoveryTest, FindsTheLibraryBesideTheExecutable) {
  testing::TempDirectory prefix;
  fs::create_directories(prefix.path() / "bin");
  fs::create_directories(prefix.path() / "lib" / "zorvik");
  const fs::path program = prefix.path() / "bin" / "probe";
  fs::copy_file(plainProbe, program);
  fs::permissions(program, fs::perms::owner_exec, fs::perm_options::add);
  EXPECT_EQ(probe(program, std::nullopt), "none\n");
  fs::copy_file(providerLibrary, prefix.path() / "lib" / "zorvik" / "libzorvik-embeddings.so");
  EXPECT_EQ(probe(program, std::nullopt), libraryScores);
  EXPECT_EQ(probe(program, ""), libraryScores) << "an empty variable counts as unset";
}

TEST_F(SemanticSearchDiscoveryTest, EntryPointInTheProcessWinsOverTheLibrary) {
  EXPECT_EQ(probe(builtinProbe, providerLibrary.string()), "7.000 7.000 7.000\n");
  EXPECT_EQ(probe(builtinProbe, std::nullopt), "7.000 7.000 7.000\n");
}

}  // namespace
}  // namespace zorvik
