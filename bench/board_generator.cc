#include "board_generator.h"

#include <fstream>
#include <random>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"

namespace zorvik::bench {
namespace {

class Writer {
 public:
  Writer(std::filesystem::path root, uint64_t seed) : root_(std::move(root)), random_(seed) {}

  void file(const std::string& relative, const std::string& contents) {
    const auto path = root_ / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    ++board_.files;
    board_.bytes += contents.size();
  }

  size_t between(size_t low, size_t high) {
    return std::uniform_int_distribution<size_t>(low, high)(random_);
  }

  std::string words(size_t count) {
    static const char* kWords[] = {
        "solar",    "adoption", "price", "region", "policy",     "subsidy", "install", "grid",
        "capacity", "study",    "curve", "source", "évaluation", "データ",  "growth",  "median"};
    std::string text;
    for (size_t i = 0; i < count; ++i) {
      if (i) text += (i % 12 == 0) ? "\n" : " ";
      text += kWords[between(0, std::size(kWords) - 1)];
    }
    return text;
  }

  GeneratedBoard& board() { return board_; }

 private:
  std::filesystem::path root_;
  std::mt19937_64 random_;
  GeneratedBoard board_;
};

AnyCodableValue layout(size_t index) {
  return JSONObject{{"position", JSONObject{{"x", double(index % 100) * 420.5},
                                            {"y", double(index / 100) * 360.25}}},
                    {"zIndex", int64_t(index)},
                    {"actualWidth", 400},
                    {"actualHeight", 320}};
}

}  // namespace

GeneratedBoard generateBoard(const std::filesystem::path& root, size_t cardCount, uint64_t seed) {
  Writer writer(root, seed);
  AnyCodableValue::Array entries;
  entries.reserve(cardCount);
  for (size_t i = 0; i < cardCount; ++i) {
    const std::string folder = "cards-" + std::to_string(i / 200) + "/";
    const std::string stem = folder + "card-" + std::to_string(i);
    const size_t roll = writer.between(0, 99);
    std::string kind;
    std::string path;
    AnyCodableValue payload;
    if (roll < 55) {
      kind = "richText";
      path = stem + ".md";
      writer.file(path,
                  "# Note " + std::to_string(i) + "\n\n" + writer.words(writer.between(30, 900)));
      payload = JSONObject{{"type", "richText"}, {"richText", JSONObject{}}};
    } else if (roll < 70) {
      kind = "table";
      path = stem + ".csv";
      const size_t columns = writer.between(3, 10);
      const size_t rows = writer.between(5, 200);
      std::string csv;
      for (size_t r = 0; r <= rows; ++r) {
        for (size_t c = 0; c < columns; ++c) {
          if (c) csv += ',';
          csv += r == 0 ? "Column " + std::to_string(c)
                        : (c % 3 == 0 ? "\"" + writer.words(3) + "\"" : std::to_string(r * c));
        }
        csv += '\n';
      }
      writer.file(path, csv);
      payload = JSONObject{{"type", "table"}, {"table", JSONObject{{"showsRowHeaders", false}}}};
    } else if (roll < 85) {
      kind = "link";
      path = stem + ".md";
      writer.file(path, "---\nzorvik-kind: link\nsource: remote\nurl: https://example.org/" +
                            std::to_string(i) + "\nnote: " + writer.words(8) +
                            "\nrow-items:\n  - label: Price\n    type: key_value\n    value: " +
                            std::to_string(i) +
                            "\ncurrent-image-index: 0\nis-template: false\n---\n" +
                            writer.words(writer.between(20, 300)) + "\n");
      payload = JSONObject{{"type", "link"}, {"link", JSONObject{}}};
    } else if (roll < 90) {
      kind = "html";
      path = stem + "-page";
      writer.file(path + "/index.html", "<html><body><h1>Card " + std::to_string(i) + "</h1><p>" +
                                            writer.words(writer.between(50, 400)) +
                                            "</p></body></html>");
      writer.file(path + "/styles.css", "body { font: 14px sans-serif; }\n");
      writer.file(path + "/script.js", "console.log('card " + std::to_string(i) + "');\n");
      payload = JSONObject{{"type", "html"}, {"html", JSONObject{}}};
    } else if (roll < 95) {
      kind = "chat";
      payload = JSONObject{
          {"type", "chat"},
          {"chat",
           JSONObject{
               {"chat", JSONObject{{"messages",
                                    AnyCodableValue::Array{
                                        JSONObject{{"role", "user"}, {"text", writer.words(20)}},
                                        JSONObject{{"role", "assistant"},
                                                   {"text", writer.words(60)}}}}}}}}};
    } else {
      kind = "image";
      path = folder + "image-" + std::to_string(i) + ".png";
      payload = JSONObject{{"type", "image"},
                           {"image", JSONObject{{"url", "https://example.org/i.png"}}}};
    }
    JSONObject entry{{"id", Uuid::random().uppercaseString()}, {"kindRawValue", kind},
                     {"title", "Card " + std::to_string(i)},   {"shadowEnabled", true},
                     {"createdAt", "2026-01-01T00:00:00Z"},    {"layout", layout(i)},
                     {"payload", std::move(payload)}};
    if (!path.empty()) entry.set("relativePath", path);
    entries.emplace_back(std::move(entry));
    ++writer.board().cards;
  }
  const AnyCodableValue document = JSONObject{{"version", 1},
                                              {"projectId", "BENCH"},
                                              {"createdAt", "2026-01-01T00:00:00Z"},
                                              {"updatedAt", "2026-01-01T00:00:00Z"},
                                              {"uiState", JSONObject{{"backgroundStyle", "Dots"}}},
                                              {"entries", std::move(entries)}};
  writer.file(".zorvik/workspace.json", *document.jsonString());
  return writer.board();
}

}  // namespace zorvik::bench
