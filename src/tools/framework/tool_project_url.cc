#include "tools/framework/tool_project_url.h"

#include <stdexcept>
#include <string>

#include "foundation/standardized_path.h"
#include "foundation/text.h"

namespace zorvik {

std::filesystem::path resolveToolProjectURL(const AnyCodableValue& input,
                                            const std::optional<std::filesystem::path>& defaultURL,
                                            std::string_view toolName) {
  if (const AnyCodableValue* path = input.member("project_path")) {
    if (const std::string* text = path->asString()) {
      const std::string trimmed = trimWhitespaceAndNewlines(*text);
      if (!trimmed.empty()) return standardizedPath(trimmed);
    }
  }
  if (defaultURL && !defaultURL->empty()) return *defaultURL;
  throw std::invalid_argument(std::string(toolName) +
                              " requires project_path when session is not bound.");
}

}  // namespace zorvik
