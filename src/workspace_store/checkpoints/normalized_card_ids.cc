#include "workspace_store/checkpoints/normalized_card_ids.h"

#include <algorithm>

#include "foundation/text.h"

namespace zorvik {

std::vector<std::string> normalizedCardIDs(const std::vector<std::string>& ids) {
  std::vector<std::string> result;
  result.reserve(ids.size());
  for (const std::string& id : ids) {
    std::string trimmed = trimWhitespaceAndNewlines(id);
    if (!trimmed.empty()) result.push_back(std::move(trimmed));
  }
  std::sort(result.begin(), result.end());
  result.erase(std::unique(result.begin(), result.end()), result.end());
  return result;
}

std::string caseInsensitiveIDKey(std::string_view id) {
  std::string key(id);
  for (char& c : key) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return key;
}

}  // namespace zorvik
