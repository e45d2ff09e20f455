// JSON throughput on a generated ~20 MB workspace document: simdjson's own DOM parse (the floor),
// AnyCodableValue::parse, and the writer in both styles. Throughput is reported as bytes/second;
// compare each against BM_SimdjsonDomParse.
#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <random>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/json_writer.h"

namespace {

// A workspace document with `cards` entries of mixed kinds and realistic payload sizes.
std::string generateWorkspaceDocument(size_t targetBytes) {
  std::mt19937_64 random(42);
  std::uniform_real_distribution<double> coordinate(-5000, 5000);
  const std::string markdown(600, 'x');
  std::string out = R"({"createdAt":"2026-01-02T03:04:05Z","entries":[)";
  for (size_t i = 0; out.size() < targetBytes; ++i) {
    if (i) out += ',';
    char id[40];
    std::snprintf(id, sizeof id, "%08zX-0000-4000-8000-%012zX", i, i * 7919);
    out +=
        R"({"createdAt":"2026-01-02T03:04:05Z","id":")" + std::string(id) +
        R"(","kindRawValue":"richText","layout":{"actualHeight":)" + std::to_string(100 + i % 300) +
        R"(,"actualWidth":320.5,"position":{"x":)" + std::to_string(coordinate(random)) +
        R"(,"y":)" + std::to_string(coordinate(random)) + R"(},"zIndex":)" + std::to_string(i) +
        R"(},"payload":{"richText":{"markdown":"# Note )" + std::to_string(i) + "\\n" +
        markdown.substr(0, 100 + i % 500) +
        R"(\nwith \"quotes\" and unicode \u00e9"},"type":"richText"},"relativePath":"notes/note-)" +
        std::to_string(i) + R"(.md","shadowEnabled":true,"title":"Note )" + std::to_string(i) +
        R"("})";
  }
  out +=
      R"(],"projectId":"P","uiState":{"backgroundStyle":"Dots"},"updatedAt":"2026-01-02T03:04:05Z","version":1})";
  return out;
}

const std::string& document() {
  static const std::string text = generateWorkspaceDocument(20 << 20);
  return text;
}

void BM_SimdjsonDomParse(benchmark::State& state) {
  simdjson::dom::parser parser;
  for (auto _ : state) {
    simdjson::dom::element root;
    if (parser.parse(document().data(), document().size()).get(root)) state.SkipWithError("parse");
    benchmark::DoNotOptimize(root);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(document().size()));
}

void BM_AnyCodableValueParse(benchmark::State& state) {
  for (auto _ : state) {
    auto value = zorvik::AnyCodableValue::parse(document());
    benchmark::DoNotOptimize(value);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(document().size()));
}

void writeBenchmark(benchmark::State& state, zorvik::JSONStyle style) {
  const auto value = zorvik::AnyCodableValue::parse(document());
  size_t bytes = 0;
  for (auto _ : state) {
    auto text = zorvik::writeJSON(value, style);
    bytes = text->size();
    benchmark::DoNotOptimize(text);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(bytes));
}

void BM_WriteCompact(benchmark::State& state) { writeBenchmark(state, zorvik::JSONStyle::compact); }
void BM_WritePretty(benchmark::State& state) { writeBenchmark(state, zorvik::JSONStyle::pretty); }

BENCHMARK(BM_SimdjsonDomParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AnyCodableValueParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteCompact)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WritePretty)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
