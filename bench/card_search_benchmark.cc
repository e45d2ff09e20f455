// The search half of the board commands on a loaded board: grep_cards and search_cards over the
// 10k-card synthetic board ($ZORVIK_BENCH_BOARDS/board-10000, made by bench/agent_commands.sh),
// with the board loaded once, outside the timing. The whole commands are timed by
// bench/agent_commands.sh.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/board_grep_tool.h"
#include "foundation/json/value_decoder.h"
#include "tools/cards/board_search_cards_tool.h"
#include "workspace_store/cli_workspace_cards_loader.h"

namespace {

const std::vector<zorvik::WorkspaceCard>& boardCards() {
  static const std::vector<zorvik::WorkspaceCard> cards = [] {
    const char* root = std::getenv("ZORVIK_BENCH_BOARDS");
    const auto board = std::filesystem::path(root ? root : "build/bench/boards") / "board-10000";
    return zorvik::CLIWorkspaceCardsLoader::loadWorkspaceCards(
        board, zorvik::WorkspaceProjectSnapshotStore());
  }();
  return cards;
}

void BM_GrepCards(benchmark::State& state, const char* query) {
  const auto& cards = boardCards();
  const auto request = zorvik::decodeValue<zorvik::BoardGrepRequest>(
      zorvik::AnyCodableValue::parse(std::string(R"({"query":")") + query + "\"}"));
  for (auto _ : state) benchmark::DoNotOptimize(zorvik::grepCards(cards, request));
  state.counters["cards"] = double(cards.size());
}
BENCHMARK_CAPTURE(BM_GrepCards, common_word, "subsidy")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_GrepCards, absent_word, "zzyzx")->Unit(benchmark::kMillisecond);

void BM_SearchCards(benchmark::State& state, const char* query) {
  // The tool shares the cards; the copy is made once, outside the timing.
  const zorvik::BoardSearchCardsTool tool{zorvik::SharedCards(boardCards())};
  const auto request = zorvik::decodeValue<zorvik::BoardSearchCardsTool::Request>(
      zorvik::AnyCodableValue::parse(std::string(R"({"query":")") + query + "\"}"));
  for (auto _ : state) benchmark::DoNotOptimize(tool.search(request));
}
BENCHMARK_CAPTURE(BM_SearchCards, common_word, "subsidy")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
