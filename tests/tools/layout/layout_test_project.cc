#include "layout_test_project.h"

namespace zorvik {

void PrintTo(const AnyCodableValue& value, std::ostream* out) {
  *out << value.compactJSONString().value_or("<not JSON>");
}

}  // namespace zorvik

namespace zorvik::testing {

AnyCodableValue richTextPayload(const std::string& text) {
  return JSONObject{{"type", "richText"}, {"richText", JSONObject{{"markdown", text}}}};
}

AnyCodableValue folderPayload(JSONObject folderFields) {
  return JSONObject{{"type", "folder"}, {"folder", std::move(folderFields)}};
}

const AnyCodableValue& at(const AnyCodableValue& value, std::string_view key) {
  static const AnyCodableValue kMissing("<missing>");
  const AnyCodableValue* found = value.member(key);
  return found ? *found : kMissing;
}

LayoutTestProject::LayoutTestProject(const std::vector<TestCard>& cards) {
  AnyCodableValue::Array entries;
  for (const TestCard& card : cards) {
    JSONObject layout{{"position", JSONObject{{"x", card.x}, {"y", card.y}}},
                      {"zIndex", card.zIndex},
                      {"actualWidth", card.width},
                      {"actualHeight", card.height}};
    if (card.snapConstraints) layout.set("snapConstraints", *card.snapConstraints);
    JSONObject entry{{"id", card.id},
                     {"kindRawValue", card.kind},
                     {"title", "Card " + card.id.substr(0, 4)},
                     {"shadowEnabled", false},
                     {"createdAt", "2026-01-05T10:00:00Z"},
                     {"layout", std::move(layout)},
                     {"payload", card.payload}};
    if (card.parentID) entry.set("parentID", *card.parentID);
    entries.push_back(std::move(entry));
  }
  const AnyCodableValue document = JSONObject{{"version", 1},
                                              {"projectId", "0F0E0D0C-0B0A-4909-8807-060504030201"},
                                              {"createdAt", "2026-01-05T10:00:00Z"},
                                              {"updatedAt", "2026-01-05T10:00:00Z"},
                                              {"uiState", JSONObject{}},
                                              {"entries", std::move(entries)}};
  folder_.write(".zorvik/workspace.json", document.jsonString().value());
}

}  // namespace zorvik::testing
