// A small project on disk for the layout tool tests: a `.zorvik/workspace.json` whose cards all
// live inline in the document, written into a fresh temporary folder.
#pragma once

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "support/temp_directory.h"

namespace zorvik {

// Failure messages of the layout tests show values as compact JSON.
void PrintTo(const AnyCodableValue& value, std::ostream* out);

}  // namespace zorvik

namespace zorvik::testing {

// Listed in this order so that a card can be written on one line as a positional aggregate.
struct TestCard {
  std::string id;
  std::string kind;  // kindRawValue
  double x = 0;
  double y = 0;
  double width = 100;
  double height = 100;
  int zIndex = 0;
  std::optional<std::string> parentID;
  AnyCodableValue payload;                         // runtime payload
  std::optional<AnyCodableValue> snapConstraints;  // layout.snapConstraints
};

// {"type": "richText", "richText": {"markdown": text}}
AnyCodableValue richTextPayload(const std::string& text);
// {"type": "folder", "folder": folderFields}
AnyCodableValue folderPayload(JSONObject folderFields);

// The member `key` of `value`, or the string "<missing>".
const AnyCodableValue& at(const AnyCodableValue& value, std::string_view key);

// The message of the std::invalid_argument that `call` throws, or "<no std::invalid_argument>".
template <class Call>
std::string invalidArgumentMessage(Call&& call) {
  try {
    call();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "<no std::invalid_argument>";
}

class LayoutTestProject {
 public:
  explicit LayoutTestProject(const std::vector<TestCard>& cards);
  const std::filesystem::path& path() const { return folder_.path(); }

 private:
  TempDirectory folder_;
};

}  // namespace zorvik::testing
